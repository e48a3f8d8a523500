// SPDX-License-Identifier: Apache-2.0
#include "modes/session_setup.hpp"
#include "session_fixture.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace wivex {
namespace {

using namespace testing;

class SessionSetup : public test_support::SessionFixture {};

TEST_F(SessionSetup, leaves_an_open_session_as_it_is) {
    EXPECT_TRUE(session_open_or_reopened(*session_, config_));
    EXPECT_EQ(console_.out(), "");
    EXPECT_EQ(supplicant_.commands().size(), 1U);
}

TEST_F(SessionSetup, says_nothing_of_a_session_that_was_created) {
    EXPECT_TRUE(session_created(*session_));
    EXPECT_THAT(console_.streams(), Pair("", ""));
}

TEST_F(SessionSetup, tells_when_a_session_was_not_created) {
    session_->close();
    EXPECT_FALSE(session_created(*session_));
    EXPECT_EQ(console_.err(), "unable to open sockets\n");
}

TEST_F(SessionSetup, needs_a_configured_peer) {
    EXPECT_FALSE(peer_configured(config_));
    EXPECT_EQ(console_.err(), "error in config file: missing target mac address\n");
    config_.p2p_target_device_mac = "02:00:00:00:00:01";
    EXPECT_TRUE(peer_configured(config_));
    EXPECT_EQ(console_.err(), "");
}

TEST_F(SessionSetup, opens_a_closed_session_once_more) {
    session_->close();
    console_.out();
    EXPECT_TRUE(session_open_or_reopened(*session_, config_));
    EXPECT_FALSE(session_->isInvalid());
    EXPECT_EQ(console_.out(), "Invalid sockets..Trying to open them again.\n");
    EXPECT_EQ(supplicant_.commands().back(), "ATTACH");
}

TEST_F(SessionSetup, tells_when_a_closed_session_cannot_be_opened_again) {
    session_->close();
    supplicant_.die();
    console_.out();
    EXPECT_FALSE(session_open_or_reopened(*session_, config_));
    EXPECT_EQ(console_.out(), "Invalid sockets..Trying to open them again.\n"
                              "[WIFI]Unable to open sockets!!\n"
                              "Unable to open sockets..quitting\n");
}

} // namespace
} // namespace wivex

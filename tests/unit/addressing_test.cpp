// SPDX-License-Identifier: Apache-2.0
#include "children.hpp"
#include "host_programs.hpp"
#include "modes/addressing.hpp"
#include "process_fixture.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace wivex {
namespace {

using namespace test_support;
using namespace testing;

class ServedAddresses : public ProcessFixture {
protected:
    void SetUp() override {
        ProcessFixture::SetUp();
        for (const char* program : {"ifconfig", "killall", "sleep", "udhcpd"}) {
            programs_.provide(program);
        }
        programs_.let_anybody_in();
        config_.interface_name = "wlan0";
        config_.p2p_iface_ip = "10.0.0.1";
        config_.dhcpd_conf = "/etc/udhcpd.conf";
    }

    HostPrograms programs_;
};

TEST_F(ServedAddresses, need_an_own_address_and_the_server) {
    EXPECT_EQ(serve_addresses(config_), 0);
    EXPECT_EQ(programs_.calls(),
              "ifconfig wlan0 10.0.0.1\nkillall udhcpd\nsleep 1\nudhcpd /etc/udhcpd.conf\n");
    EXPECT_EQ(console_.err(), "");
}

TEST_F(ServedAddresses, fail_with_12_when_the_own_address_cannot_be_set) {
    EXPECT_EQ(without_processes([this] { return serve_addresses(config_); }), 12);
    EXPECT_THAT(console_.streams(),
                Pair("ifconfig wlan0 10.0.0.1\n", "Unable to assign ip to wlan0 \n"));
}

TEST_F(ServedAddresses, fail_with_12_when_the_server_cannot_be_started) {
    programs_.provide("ifconfig", no_more_processes);
    EXPECT_EQ(until_no_more_processes([this] { return serve_addresses(config_); }), 12);
    EXPECT_EQ(programs_.calls(), "ifconfig wlan0 10.0.0.1\n");
    EXPECT_EQ(console_.err(), "Unable to start dhcpd\n");
}

} // namespace
} // namespace wivex

// SPDX-License-Identifier: Apache-2.0
// A scan whose requests cannot even be made.

#include "console_capture.hpp"
#include "diag/netlink.hpp"
#include "diag/nl80211_scan.hpp"

#include <gtest/gtest.h>
#include <netlink/msg.h>
#include <unistd.h>

#include <cerrno>

namespace wivex {
namespace {

class ScanRequest : public ::testing::Test {
protected:
    void TearDown() override {
        ::nlmsg_set_default_size(static_cast<std::size_t>(::getpagesize()));
    }

    NetlinkSocket socket_ = open_generic_netlink();
    test_support::ConsoleCapture console_;
};

TEST_F(ScanRequest, that_does_not_fit_is_told_as_such) {
    // Room for the question after nl80211, but not for the names to scan for.
    ::nlmsg_set_default_size(NLMSG_HDRLEN + 16);
    constexpr int no_family = -1;
    EXPECT_EQ(do_scan_trigger(socket_.get(), 1, no_family), -ENOMEM);
    EXPECT_EQ(console_.out(),
              "ERROR: NL80211_CMD_TRIGGER_SCAN does not fit into a netlink message.\n");
}

} // namespace
} // namespace wivex

// SPDX-License-Identifier: Apache-2.0
// A scan whose requests cannot be made or sent.

#include "common/files.hpp"
#include "console_capture.hpp"
#include "diag/netlink.hpp"
#include "diag/nl80211_scan.hpp"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <netlink/errno.h>
#include <netlink/msg.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <string>

// The tests are linked so that the tool asks these in the library's place.
// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
namespace {

int objects_left = INT_MAX;

bool can_be_had() {
    return objects_left-- > 0;
}

} // namespace

extern "C" {

nl_msg* __real_nlmsg_alloc();
nl_cb* __real_nl_cb_alloc(nl_cb_kind kind);
nl_sock* __real_nl_socket_alloc();

nl_msg* __wrap_nlmsg_alloc() {
    return can_be_had() ? __real_nlmsg_alloc() : nullptr;
}

nl_cb* __wrap_nl_cb_alloc(nl_cb_kind kind) {
    return can_be_had() ? __real_nl_cb_alloc(kind) : nullptr;
}

nl_sock* __wrap_nl_socket_alloc() {
    return can_be_had() ? __real_nl_socket_alloc() : nullptr;
}
}
// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)

namespace wivex {
namespace {

constexpr int no_family = -1;
constexpr int some_family = 28;

class ScanRequest : public ::testing::Test {
protected:
    void TearDown() override {
        objects_left = INT_MAX;
        ::nlmsg_set_default_size(static_cast<std::size_t>(::getpagesize()));
    }
    int trigger() const {
        return do_scan_trigger(socket_.get(), 1, no_family);
    }
    int dump() {
        return dump_scan(socket_.get(), 1, some_family, listing_);
    }
    /// What a request answers and tells that gets so many netlink objects and no more.
    template <typename Request>
    void expect_with_objects(int count, Request request, int result, const char* told) {
        objects_left = count;
        EXPECT_EQ(request(), result);
        EXPECT_EQ(console_.out(), told);
    }
    void break_socket() const {
        const UniqueFd no_socket(::open("/dev/null", O_RDWR | O_CLOEXEC));
        ASSERT_GE(::dup2(no_socket.get(), nl_socket_get_fd(socket_.get())), 0);
    }

    NetlinkSocket socket_ = open_generic_netlink();
    FileWriter listing_;
    test_support::ConsoleCapture console_;
};

TEST_F(ScanRequest, that_does_not_fit_is_told_as_such) {
    // Room for the question after nl80211, but not for the names to scan for.
    ::nlmsg_set_default_size(NLMSG_HDRLEN + 16);
    EXPECT_EQ(trigger(), -ENOMEM);
    EXPECT_EQ(console_.out(),
              "ERROR: NL80211_CMD_TRIGGER_SCAN does not fit into a netlink message.\n");
}

TEST_F(ScanRequest, of_the_dump_that_does_not_fit_is_told_as_such) {
    ::nlmsg_set_default_size(NLMSG_HDRLEN + 4);
    EXPECT_EQ(dump(), -2);
    EXPECT_EQ(console_.out(), "ERROR: NL80211_CMD_GET_SCAN does not fit into a netlink message.\n");
}

TEST_F(ScanRequest, that_cannot_be_sent_is_told_with_the_reason) {
    break_socket();
    const int result = trigger();
    EXPECT_LT(result, 0);
    EXPECT_EQ(console_.out(), "[WIFI]nl_send_auto_complete failed from do_scan_trigger\n"
                              "[WIFI]Waiting for scan to complete...\n"
                              "[WIFI]ERROR: nl_recvmsgs() returned " +
                                  std::to_string(result) + " (" + ::nl_geterror(-result) + ").\n");
}

TEST_F(ScanRequest, of_the_dump_that_cannot_be_sent_is_told) {
    break_socket();
    EXPECT_EQ(dump(), -2);
    EXPECT_EQ(console_.out(), "[WIFI]nl_send_auto_complete failed from execute_scan_nl_command\n");
}

TEST_F(ScanRequest, without_memory_is_told_by_what_could_not_be_had) {
    const auto request = [this] { return trigger(); };
    expect_with_objects(0, request, -12, "ERROR: Failed to allocate netlink message for msg.\n");
    expect_with_objects(1, request, -12,
                        "ERROR: Failed to allocate netlink message for ssids_to_scan.\n");
    expect_with_objects(2, request, -12, "ERROR: Failed to allocate netlink callbacks.\n");
}

TEST_F(ScanRequest, of_the_dump_without_memory_is_told_by_what_could_not_be_had) {
    const auto request = [this] { return dump(); };
    expect_with_objects(0, request, -2, "[WIFI]nlmsg_alloc failed\n");
    expect_with_objects(1, request, -2, "ERROR: Failed to allocate netlink callbacks.\n");
}

TEST_F(ScanRequest, without_a_socket_is_told) {
    expect_with_objects(0, execute_scan_nl_command, -2,
                        "[WIFI]Failed to allocate netlink socket.\n");
}

} // namespace
} // namespace wivex

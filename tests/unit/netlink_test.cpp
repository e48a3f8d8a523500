// SPDX-License-Identifier: Apache-2.0
// Receives: how they wait, what they take, and how they fail.

#include "children.hpp"
#include "diag/netlink.hpp"
#include "pipe.hpp"
#include "scratch.hpp"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <netlink/errno.h>
#include <netlink/netlink.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <functional>
#include <string>
#include <thread>

namespace wivex {
namespace {

using namespace test_support;
using namespace testing;

class NetlinkReceive : public ::testing::Test {
protected:
    /// What comes is read from `fd`, in the kernel's place.
    void listen_to(int fd) const {
        ASSERT_EQ(::fcntl(fd, F_SETFL, O_NONBLOCK), 0);
        ASSERT_GE(::dup2(fd, nl_socket_get_fd(socket_.get())), 0);
    }
    /// Listens to `peer_`.
    void listen_to_peer(int type) {
        std::array<int, 2> ends{};
        ASSERT_EQ(::socketpair(AF_UNIX, type, 0, ends.data()), 0);
        peer_.reset(ends[1]);
        const UniqueFd own(ends[0]);
        listen_to(own.get());
    }
    int receive() const {
        return nl_recvmsgs(socket_.get(), callbacks_.get());
    }
    /// Five receives of this result, behind a rest of a hundredth of a second each.
    static void expect_rests(const std::function<int()>& receive, const Matcher<int>& result) {
        const Stopwatch watch;
        for (int time = 0; time < 5; ++time) {
            EXPECT_THAT(receive(), result);
        }
        EXPECT_THAT(watch.elapsed(), AllOf(Ge(milliseconds(50)), Le(milliseconds(4000))));
    }
    int receive_part_of(std::size_t bytes) const {
        const std::string part(bytes, 'x');
        EXPECT_EQ(::send(peer_.get(), part.data(), part.size(), 0),
                  static_cast<ssize_t>(part.size()));
        return receive();
    }

    UniqueFd peer_;
    NetlinkSocket socket_ = open_generic_netlink();
    NetlinkCallbacks callbacks_ = make_netlink_callbacks();
};

TEST_F(NetlinkReceive, rests_a_hundredth_of_a_second_on_an_error_that_stays) {
    const Pipe no_socket;
    no_socket.write();
    listen_to(no_socket.reader());
    expect_rests([this] { return receive(); }, Lt(0));
}

TEST_F(NetlinkReceive, rests_on_an_error_while_the_library_asks_for_a_name) {
    const Pipe no_socket;
    no_socket.write();
    listen_to(no_socket.reader());
    expect_rests([this] { return nl_recvmsgs_default(socket_.get()); }, Lt(0));
}

TEST_F(NetlinkReceive, rests_on_a_socket_that_is_at_its_end) {
    listen_to_peer(SOCK_STREAM);
    peer_.reset();
    expect_rests([this] { return receive(); }, Eq(0));
}

long times_slept() {
    rusage usage{};
    ::getrusage(RUSAGE_THREAD, &usage);
    return usage.ru_nvcsw;
}

TEST_F(NetlinkReceive, sleeps_until_something_comes) {
    listen_to_peer(SOCK_STREAM);
    const std::jthread peer([this] {
        std::this_thread::sleep_for(milliseconds(500));
        peer_.reset();
    });
    const long before = times_slept();
    EXPECT_EQ(receive(), 0);
    EXPECT_LT(times_slept() - before, 20);
}

TEST_F(NetlinkReceive, can_be_interrupted_also_when_it_was_woken_for_nothing) {
    EXPECT_EQ(end_of_interrupted(SIGINT,
                                 [this] {
                                     struct sigaction action {};
                                     action.sa_handler = [](int) {};
                                     ::sigaction(SIGALRM, &action, nullptr);
                                     ::ualarm(100'000, 0);
                                     receive();
                                 }),
              50);
}

// A part without a sender's address is refused, but only when it has been taken whole.
TEST_F(NetlinkReceive, takes_parts_of_up_to_32_KiB) {
    listen_to_peer(SOCK_SEQPACKET);
    EXPECT_EQ(receive_part_of(32768), -NLE_NOADDR);
    EXPECT_EQ(receive_part_of(32769), -NLE_MSG_TRUNC);
}

} // namespace
} // namespace wivex

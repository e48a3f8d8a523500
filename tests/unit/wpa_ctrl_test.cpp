// SPDX-License-Identifier: Apache-2.0
// How control connections open and close, and what they leave in /tmp; helpers of the client.

#include "common/process_state.hpp"
#include "control_connection.hpp"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <malloc.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <ctime>
#include <string>
#include <string_view>
#include <vector>

namespace wivex {
namespace {

using namespace test_support;
using namespace testing;

std::string client_name(int number) {
    return "/tmp/wpa_ctrl_" + std::to_string(::getpid()) + "-" + std::to_string(number);
}

// ---- opening -----------------------------------------------------------------------------------

TEST_F(ControlClient, binds_a_name_made_of_process_id_and_counter) {
    const int before = client_counter;
    const auto first = open();
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(client_counter, before + 1);
    EXPECT_STREQ(first->local.sun_path, client_name(before + 1).c_str());
    EXPECT_TRUE(exists(client_name(before + 1)));
    const auto second = open();
    ASSERT_NE(second, nullptr);
    EXPECT_STREQ(second->local.sun_path, client_name(before + 2).c_str());
    EXPECT_EQ(wpa_ctrl_get_fd(*second), second->socket);
}

// NOLINTNEXTLINE(cppcoreguidelines-interfaces-global-init): it is set before any code runs
const int counter_at_start = client_counter;

TEST_F(ControlClient, of_a_run_that_has_just_started_is_counted_as_the_first) {
    EXPECT_EQ(counter_at_start, 0);
}

TEST_F(ControlClient, holds_both_addresses) {
    const auto ctrl = open();
    EXPECT_EQ(ctrl->local.sun_family, AF_UNIX);
    EXPECT_EQ(ctrl->dest.sun_family, AF_UNIX);
    EXPECT_EQ(ctrl->dest.sun_path, control_path());
}

TEST_F(ControlClient, does_not_block_on_its_socket) {
    const auto ctrl = open();
    EXPECT_NE(::fcntl(ctrl->socket, F_GETFL) & O_NONBLOCK, 0);
}

TEST_F(ControlSocket, refuses_a_missing_path) {
    EXPECT_EQ(wpa_ctrl_open(nullptr), nullptr);
}

TEST_F(ControlSocket, leaves_no_file_behind_and_says_nothing_when_nobody_listens) {
    const int before = client_counter;
    EXPECT_EQ(wpa_ctrl_open(control_path().c_str()), nullptr);
    EXPECT_EQ(client_counter, before + 1);
    EXPECT_FALSE(exists(client_name(before + 1)));
}

TEST_F(ControlSocket, is_silent_about_every_failure_to_open) {
    wpa_ctrl_open(nullptr);
    wpa_ctrl_open("");
    wpa_ctrl_open(control_path().c_str());
    wpa_ctrl_open("@abstract:nobody");
    wpa_ctrl_open(("/" + std::string(300, 'x')).c_str());
    EXPECT_EQ(console_.out(), "");
    EXPECT_EQ(console_.err(), "");
}

TEST_F(ControlSocket, takes_a_path_of_107_characters) {
    std::string long_path = directory_.path() + "/";
    long_path.append(107 - long_path.size(), 'p');
    const FakeSupplicant supplicant(long_path);
    const Connection ctrl(wpa_ctrl_open(long_path.c_str()));
    EXPECT_NE(ctrl, nullptr);
}

TEST_F(ControlSocket, refuses_a_path_of_108_characters_and_leaves_its_own_file_to_the_cleanup) {
    std::string long_path = directory_.path() + "/";
    long_path.append(108 - long_path.size(), 'p');
    EXPECT_EQ(wpa_ctrl_open(long_path.c_str()), nullptr);
    EXPECT_TRUE(exists(client_name(client_counter)));
    wpa_ctrl_cleanup();
    EXPECT_FALSE(exists(client_name(client_counter)));
}

// The listener's name is as long as an address can be; it is met only by an address handed over in
// full length.
TEST_F(ControlSocket, connects_to_an_abstract_name_with_an_address_of_full_length) {
    const std::string name = "unit-test-" + std::to_string(::getpid());
    const FakeSupplicant supplicant("@" + name);
    const Connection ctrl(wpa_ctrl_open(("@abstract:" + name).c_str()));
    ASSERT_NE(ctrl, nullptr);
    EXPECT_EQ(ctrl->dest.sun_path[0], '\0');
    EXPECT_STREQ(ctrl->dest.sun_path + 1, name.c_str());
    EXPECT_EQ(request(*ctrl, "PING").status, 0);
}

TEST_F(ControlSocket, cuts_an_abstract_name_that_does_not_fit) {
    std::string name = "unit-test-" + std::to_string(::getpid()) + "-";
    name.append(106 - name.size(), 'a');
    const FakeSupplicant supplicant("@" + name);
    const Connection ctrl(wpa_ctrl_open(("@abstract:" + name + "and more").c_str()));
    ASSERT_NE(ctrl, nullptr);
    EXPECT_STREQ(ctrl->dest.sun_path + 1, name.c_str());
}

TEST_F(ControlClient, removes_a_stale_file_of_its_own_name_and_tries_once_more) {
    const std::string stale = client_name(client_counter + 1);
    create_file(stale);
    ASSERT_TRUE(exists(stale));
    const auto ctrl = open();
    ASSERT_NE(ctrl, nullptr);
    EXPECT_EQ(ctrl->local.sun_path, stale);
    struct stat status {};
    ASSERT_EQ(::stat(stale.c_str(), &status), 0);
    EXPECT_TRUE(S_ISSOCK(status.st_mode));
}

TEST_F(ControlClient, gives_up_when_its_name_stays_taken) {
    const std::string taken = client_name(client_counter + 1);
    ASSERT_EQ(::mkdir(taken.c_str(), 0700), 0); // cannot be unlinked
    EXPECT_EQ(wpa_ctrl_open(control_path().c_str()), nullptr);
    EXPECT_EQ(supplicant_.commands().size(), 0U);
    ::rmdir(taken.c_str());
}

TEST_F(ControlClient, works_with_descriptors_above_1023) {
    rlimit limit{};
    ::getrlimit(RLIMIT_NOFILE, &limit);
    limit.rlim_cur = std::min<rlim_t>(limit.rlim_max, 4096);
    ::setrlimit(RLIMIT_NOFILE, &limit);
    ASSERT_GE(limit.rlim_cur, 1200U);
    std::vector<int> taken;
    int fd = 0;
    while ((fd = ::open("/dev/null", O_RDONLY | O_CLOEXEC)) >= 0 && fd < 1100) {
        taken.push_back(fd);
    }
    taken.push_back(fd);
    {
        const auto ctrl = open();
        ASSERT_NE(ctrl, nullptr);
        EXPECT_GT(wpa_ctrl_get_fd(*ctrl), 1023);
        const Exchange ping = request(*ctrl, "PING");
        EXPECT_EQ(ping.status, 0);
        EXPECT_EQ(ping.text(), "OK\n");
        EXPECT_FALSE(wpa_ctrl_pending(*ctrl));
        EXPECT_EQ(wpa_ctrl_attach(*ctrl), 0);
        supplicant_.send_event("<3>EVENT");
        EXPECT_TRUE(wpa_ctrl_pending(*ctrl));
    }
    for (const int one : taken) {
        ::close(one);
    }
}

// ---- closing -----------------------------------------------------------------------------------

TEST_F(ControlClient, leaves_two_trace_lines_when_it_closes) {
    auto ctrl = open();
    const int fd = ctrl->socket;
    const std::string name = ctrl->local.sun_path;
    ctrl.reset();
    EXPECT_EQ(console_.out(),
              "[WIFI]Here at 217 wpa_ctrl_close...\nValue of sigterm_var is 0 ...\n");
    EXPECT_EQ(console_.err(), "");
    EXPECT_FALSE(exists(name));
    EXPECT_EQ(::fcntl(fd, F_GETFD), -1);
}

TEST_F(ControlClient, keeps_its_record_while_the_process_is_being_ended) {
    static wpa_ctrl* kept = nullptr; // never freed, by design
    kept = open().release();
    const int fd = kept->socket;
    const std::string name = kept->local.sun_path;
    sigterm_var = 1;
    wpa_ctrl_close(kept);
    EXPECT_EQ(console_.out(),
              "[WIFI]Here at 217 wpa_ctrl_close...\nValue of sigterm_var is 1 ...\n");
    EXPECT_FALSE(exists(name));
    EXPECT_EQ(::fcntl(fd, F_GETFD), -1);
    EXPECT_EQ(kept->socket, -1);
    EXPECT_EQ(kept->local.sun_path, name);
}

TEST_F(ControlClient, closes_nothing_for_a_missing_connection) {
    wpa_ctrl_close(nullptr);
    wpa_ctrl_retire(nullptr);
    EXPECT_EQ(console_.out(), "");
}

TEST_F(ControlClient, retires_a_connection_without_a_trace) {
    auto ctrl = open();
    const int fd = ctrl->socket;
    wpa_ctrl_retire(ctrl.release());
    EXPECT_EQ(console_.out(), "");
    EXPECT_EQ(::fcntl(fd, F_GETFD), -1);
}

TEST_F(ControlClient, gives_back_the_memory_of_a_connection) {
    constexpr std::size_t rounds = 1000;
    const std::size_t before = ::mallinfo2().uordblks;
    for (std::size_t round = 0; round < rounds; ++round) {
        open().reset();
        wpa_ctrl_retire(open().release());
    }
    EXPECT_LT(::mallinfo2().uordblks, before + rounds * sizeof(wpa_ctrl));
    console_.out();
}

TEST_F(ControlSocket, cleanup_removes_every_client_socket_file_whoever_made_it) {
    const std::vector<std::string> removed{"/tmp/wpa_ctrl_1-1", "/tmp/wpa_ctrl_",
                                           "/tmp/wpa_ctrl_anything",
                                           "/tmp/wpa_ctrl_" + std::string(255 - 9, 'n')};
    const std::vector<std::string> kept{"/tmp/wpa_ctrl", "/tmp/wpa_ctr_1-1", "/tmp/xwpa_ctrl_1-1",
                                        "/tmp/WPA_CTRL_1-1"};
    for (const auto& names : {removed, kept}) {
        for (const auto& name : names) {
            create_file(name);
            ASSERT_TRUE(exists(name));
        }
    }
    wpa_ctrl_cleanup();
    for (const auto& name : removed) {
        EXPECT_FALSE(exists(name)) << name;
    }
    for (const auto& name : kept) {
        EXPECT_TRUE(exists(name)) << name;
        ::unlink(name.c_str());
    }
}

// ---- helpers -----------------------------------------------------------------------------------

struct Copy {
    const char* source;
    std::size_t size;
    std::size_t length;
    /// Six characters that were '#' before.
    std::string_view buffer;
};

TEST(OsStrlcpy, copies_what_fits_and_always_terminates) {
    using namespace std::string_view_literals;
    for (const Copy& copy : {Copy{"abc", 5, 3, "abc\0##"sv}, Copy{"abcd", 5, 4, "abcd\0#"sv},
                             Copy{"abcdefgh", 5, 8, "abcd\0#"sv}, Copy{"abc", 1, 3, "\0#####"sv},
                             Copy{"abc", 0, 3, "######"sv}, Copy{"", 5, 0, "\0#####"sv}}) {
        std::array<char, 6> buffer{};
        buffer.fill('#');
        EXPECT_EQ(os_strlcpy(buffer.data(), copy.source, copy.size), copy.length) << copy.source;
        EXPECT_EQ(std::string_view(buffer.data(), 6), copy.buffer) << copy.source;
    }
}
TEST(OsSleep, sleeps_seconds_and_then_microseconds) {
    const Stopwatch watch;
    os_sleep(0, 0);
    EXPECT_LT(watch.elapsed(), milliseconds(900));
    os_sleep(0, 200000);
    EXPECT_THAT(watch.elapsed(), AllOf(Ge(milliseconds(200)), Le(milliseconds(1500))));
    os_sleep(1, 100000);
    EXPECT_THAT(watch.elapsed(), AllOf(Ge(milliseconds(1300)), Le(milliseconds(2500))));
}

TEST(OsGetTime, tells_the_wall_clock) {
    std::int64_t seconds = 0;
    std::int64_t microseconds = -1;
    const auto before = std::time(nullptr);
    EXPECT_EQ(os_get_time(seconds, microseconds), 0);
    EXPECT_THAT(seconds, AllOf(Ge(before), Le(before + 1)));
    EXPECT_THAT(microseconds, AllOf(Ge(0), Le(999999)));
}

} // namespace
} // namespace wivex

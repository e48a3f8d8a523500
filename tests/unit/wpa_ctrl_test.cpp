// SPDX-License-Identifier: Apache-2.0
#include "common/process_state.hpp"
#include "console_capture.hpp"
#include "ctrl/wpa_ctrl.hpp"
#include "fake_supplicant.hpp"
#include "scratch.hpp"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <string>
#include <vector>

namespace wivex {
namespace {

using std::chrono::milliseconds;
using test_support::ConsoleCapture;
using test_support::exists;
using test_support::FakeSupplicant;
using test_support::ScratchDirectory;
using test_support::Stopwatch;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::Ge;
using ::testing::Le;

struct CtrlCloser {
    void operator()(wpa_ctrl* ctrl) const {
        wpa_ctrl_close(ctrl);
    }
};
using Connection = std::unique_ptr<wpa_ctrl, CtrlCloser>;

std::string client_name(int number) {
    return "/tmp/wpa_ctrl_" + std::to_string(::getpid()) + "-" + std::to_string(number);
}

class ControlSocket : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        test_support::use_private_tmp();
    }
    void SetUp() override {
        test_support::reset_process_state();
    }
    void TearDown() override {
        test_support::reset_process_state();
    }

    std::string path() const {
        return directory_ / "wlan0";
    }

    ScratchDirectory directory_;
};

class ControlClient : public ControlSocket {
protected:
    Connection open() {
        return Connection(wpa_ctrl_open(path().c_str()));
    }

    FakeSupplicant supplicant_{path()};
};

std::vector<std::string>& events_passed() {
    static std::vector<std::string> events;
    return events;
}

void note_event(const char* message, std::size_t length) {
    EXPECT_EQ(std::string(message).size(), length);
    events_passed().emplace_back(message);
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

TEST_F(ControlClient, holds_both_addresses) {
    const auto ctrl = open();
    EXPECT_EQ(ctrl->local.sun_family, AF_UNIX);
    EXPECT_EQ(ctrl->dest.sun_family, AF_UNIX);
    EXPECT_EQ(ctrl->dest.sun_path, path());
}

TEST_F(ControlClient, does_not_block_on_its_socket) {
    const auto ctrl = open();
    EXPECT_NE(::fcntl(ctrl->socket, F_GETFL) & O_NONBLOCK, 0);
}

TEST_F(ControlSocket, refuses_a_missing_path) {
    EXPECT_EQ(wpa_ctrl_open(nullptr), nullptr);
}

TEST_F(ControlSocket, leaves_no_file_behind_and_says_nothing_when_nobody_listens) {
    const ConsoleCapture console;
    const int before = client_counter;
    EXPECT_EQ(wpa_ctrl_open(path().c_str()), nullptr);
    EXPECT_EQ(client_counter, before + 1);
    EXPECT_FALSE(exists(client_name(before + 1)));
}

TEST_F(ControlSocket, is_silent_about_every_failure_to_open) {
    ConsoleCapture console;
    wpa_ctrl_open(nullptr);
    wpa_ctrl_open("");
    wpa_ctrl_open(path().c_str());
    wpa_ctrl_open("@abstract:nobody");
    wpa_ctrl_open(("/" + std::string(300, 'x')).c_str());
    EXPECT_EQ(console.out(), "");
    EXPECT_EQ(console.err(), "");
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
    std::array<char, 16> reply{};
    std::size_t length = reply.size();
    EXPECT_EQ(wpa_ctrl_request(*ctrl, "PING", reply.data(), length), 0);
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
    ::close(::open(stale.c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600));
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
    EXPECT_EQ(wpa_ctrl_open(path().c_str()), nullptr);
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
        std::array<char, 16> reply{};
        std::size_t length = reply.size();
        EXPECT_EQ(wpa_ctrl_request(*ctrl, "PING", reply.data(), length), 0);
        EXPECT_EQ(std::string(reply.data(), length), "OK\n");
        EXPECT_FALSE(wpa_ctrl_pending(*ctrl));
        EXPECT_EQ(wpa_ctrl_attach(*ctrl), 0);
        supplicant_.send_event("<3>EVENT");
        EXPECT_TRUE(wpa_ctrl_pending(*ctrl));
    }
    for (const int one : taken) {
        ::close(one);
    }
}

// ---- requests ----------------------------------------------------------------------------------

TEST_F(ControlClient, sends_exactly_the_bytes_of_the_command_and_returns_the_reply) {
    supplicant_.answer("SET_NETWORK 0 ssid \"home\"", {"OK\n"});
    const auto ctrl = open();
    std::array<char, 16> reply{};
    reply.fill('#');
    std::size_t length = 10;
    EXPECT_EQ(wpa_ctrl_request(*ctrl, "SET_NETWORK 0 ssid \"home\"", reply.data(), length), 0);
    EXPECT_EQ(length, 3U);
    EXPECT_EQ(std::string(reply.data(), reply.size()), "OK\n#############");
    EXPECT_THAT(supplicant_.commands(), ElementsAre("SET_NETWORK 0 ssid \"home\""));
}

TEST_F(ControlClient, cuts_a_reply_at_the_room_that_is_there) {
    supplicant_.answer("STATUS", {std::string(3000, 'r')});
    const auto ctrl = open();
    std::array<char, 101> reply{};
    reply.fill('#');
    std::size_t length = 100;
    EXPECT_EQ(wpa_ctrl_request(*ctrl, "STATUS", reply.data(), length), 0);
    EXPECT_EQ(length, 100U);
    EXPECT_EQ(std::string(reply.data(), reply.size()), std::string(100, 'r') + "#");
}

TEST_F(ControlClient, takes_an_empty_datagram_as_the_reply) {
    supplicant_.answer("STATUS", {"", "<3>later"});
    const auto ctrl = open();
    std::array<char, 16> reply{};
    std::size_t length = reply.size();
    EXPECT_EQ(wpa_ctrl_request(*ctrl, "STATUS", reply.data(), length), 0);
    EXPECT_EQ(length, 0U);
}

TEST_F(ControlClient, skips_events_that_come_before_the_reply) {
    supplicant_.answer("SCAN", {"<3>CTRL-EVENT-BSS-ADDED 1", "<2>MORE", "OK\n"});
    const auto ctrl = open();
    std::array<char, 64> reply{};
    std::size_t length = reply.size();
    EXPECT_EQ(wpa_ctrl_request(*ctrl, "SCAN", reply.data(), length), 0);
    EXPECT_EQ(std::string(reply.data(), length), "OK\n");
}

TEST_F(ControlClient, passes_events_that_come_before_the_reply_to_the_callback) {
    events_passed().clear();
    supplicant_.answer("SCAN", {"<3>FIRST", "<3>SECOND", "OK\n"});
    const auto ctrl = open();
    std::array<char, 64> reply{};
    std::size_t length = reply.size();
    EXPECT_EQ(wpa_ctrl_request(*ctrl, "SCAN", reply.data(), length, note_event), 0);
    EXPECT_EQ(std::string(reply.data(), length), "OK\n");
    EXPECT_THAT(events_passed(), ElementsAre("<3>FIRST", "<3>SECOND"));
}

TEST_F(ControlClient, passes_an_event_that_fills_the_buffer_with_its_last_byte_cut) {
    events_passed().clear();
    supplicant_.answer("SCAN", {"<3>" + std::string(100, 'e'), "OK\n"});
    const auto ctrl = open();
    std::array<char, 21> reply{};
    reply.fill('#');
    std::size_t length = 20;
    EXPECT_EQ(wpa_ctrl_request(*ctrl, "SCAN", reply.data(), length, note_event), 0);
    EXPECT_THAT(events_passed(), ElementsAre("<3>" + std::string(16, 'e')));
    EXPECT_EQ(length, 3U);
    EXPECT_EQ(reply[20], '#');
}

TEST_F(ControlClient, fails_at_once_when_the_supplicant_is_gone) {
    const auto ctrl = open();
    supplicant_.die();
    std::array<char, 16> reply{};
    std::size_t length = reply.size();
    const Stopwatch watch;
    EXPECT_EQ(wpa_ctrl_request(*ctrl, "PING", reply.data(), length), -1);
    EXPECT_LT(watch.elapsed(), milliseconds(1500));
    EXPECT_EQ(length, reply.size());
}

TEST_F(ControlClient, gives_up_on_a_silent_supplicant_after_10_seconds) {
    supplicant_.answer("PING", {});
    const auto ctrl = open();
    std::array<char, 16> reply{};
    std::size_t length = reply.size();
    const Stopwatch watch;
    const auto processor_before = test_support::processor_time();
    EXPECT_EQ(wpa_ctrl_request(*ctrl, "PING", reply.data(), length), -2);
    EXPECT_THAT(watch.elapsed(), AllOf(Ge(milliseconds(9900)), Le(milliseconds(12500))));
    EXPECT_EQ(length, reply.size());
    // The fake's own polling is in here as well.
    EXPECT_LT(test_support::processor_time() - processor_before, milliseconds(300));
}

TEST_F(ControlClient, waits_another_10_seconds_after_each_event) {
    supplicant_.answer("ATTACH", {"OK\n"});
    supplicant_.answer("SCAN", {"<3>FIRST"}, milliseconds(5500));
    supplicant_.event_after("SCAN", "LATE\n", milliseconds(5500));
    const auto ctrl = open();
    ASSERT_EQ(wpa_ctrl_attach(*ctrl), 0);
    std::array<char, 16> reply{};
    std::size_t length = reply.size();
    const Stopwatch watch;
    EXPECT_EQ(wpa_ctrl_request(*ctrl, "SCAN", reply.data(), length), 0);
    EXPECT_EQ(std::string(reply.data(), length), "LATE\n");
    EXPECT_GE(watch.elapsed(), milliseconds(10900));
}

class BusySupplicant : public ControlSocket {
protected:
    void SetUp() override {
        ControlSocket::SetUp();
        server_ = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        path().copy(address.sun_path, sizeof(address.sun_path) - 1);
        ASSERT_EQ(::bind(server_, reinterpret_cast<const sockaddr*>(&address), sizeof(address)), 0);
        ctrl_.reset(wpa_ctrl_open(path().c_str()));
        ASSERT_NE(ctrl_, nullptr);
        while (::send(ctrl_->socket, "FILL", 4, MSG_DONTWAIT) == 4) {
        }
    }
    void TearDown() override {
        ctrl_.reset();
        ::close(server_);
        ControlSocket::TearDown();
    }

    int server_ = -1;
    Connection ctrl_;
    std::array<char, 16> reply_{};
    std::size_t length_ = reply_.size();
};

TEST_F(BusySupplicant, is_tried_again_for_more_than_5_seconds) {
    const Stopwatch watch;
    EXPECT_EQ(wpa_ctrl_request(*ctrl_, "PING", reply_.data(), length_), -1);
    EXPECT_THAT(watch.elapsed(), AllOf(Ge(milliseconds(5000)), Le(milliseconds(8000))));
}

TEST_F(BusySupplicant, gets_the_command_as_soon_as_a_try_finds_room) {
    std::jthread reader([this] {
        std::this_thread::sleep_for(milliseconds(1500));
        for (;;) {
            std::array<char, 16> command{};
            sockaddr_un client{};
            socklen_t client_length = sizeof(client);
            const ssize_t length = ::recvfrom(server_, command.data(), command.size(), 0,
                                              reinterpret_cast<sockaddr*>(&client), &client_length);
            if (std::string(command.data(), static_cast<std::size_t>(length)) == "PING") {
                ::sendto(server_, "PONG\n", 5, 0, reinterpret_cast<const sockaddr*>(&client),
                         client_length);
                return;
            }
        }
    });
    const Stopwatch watch;
    EXPECT_EQ(wpa_ctrl_request(*ctrl_, "PING", reply_.data(), length_), 0);
    EXPECT_EQ(std::string(reply_.data(), length_), "PONG\n");
    EXPECT_THAT(watch.elapsed(), AllOf(Ge(milliseconds(1500)), Le(milliseconds(4500))));
}

// ---- attaching ---------------------------------------------------------------------------------

TEST_F(ControlClient, attaches_and_detaches_with_an_OK_line) {
    const auto ctrl = open();
    EXPECT_EQ(wpa_ctrl_attach(*ctrl), 0);
    EXPECT_EQ(wpa_ctrl_detach(*ctrl), 0);
    EXPECT_THAT(supplicant_.commands(), ElementsAre("ATTACH", "DETACH"));
}

class AttachReply : public ControlClient, public ::testing::WithParamInterface<std::string> {};

TEST_P(AttachReply, that_is_not_exactly_OK_fails) {
    supplicant_.answer("ATTACH", {GetParam()});
    supplicant_.answer("DETACH", {GetParam()});
    const auto ctrl = open();
    EXPECT_EQ(wpa_ctrl_attach(*ctrl), -1);
    EXPECT_EQ(wpa_ctrl_detach(*ctrl), -1);
}

INSTANTIATE_TEST_SUITE_P(Texts, AttachReply,
                         ::testing::Values("OK", "OK\n\n", "OK\nOK\n", "ok\n", "FAIL\n", "",
                                           "OK\n and a long text behind it", "KO\n"),
                         [](const auto& text) { return "text_" + std::to_string(text.index); });

TEST_F(ControlClient, attaches_although_an_event_comes_first) {
    supplicant_.answer("ATTACH", {"<3>EVENT-LONGER-THAN-THE-BUFFER", "OK\n"});
    const auto ctrl = open();
    EXPECT_EQ(wpa_ctrl_attach(*ctrl), 0);
}

TEST_F(ControlClient, passes_the_failure_of_a_request_through_attach) {
    const auto ctrl = open();
    supplicant_.die();
    EXPECT_EQ(wpa_ctrl_attach(*ctrl), -1);
}

// ---- receiving ---------------------------------------------------------------------------------

TEST_F(ControlClient, receives_nothing_at_once_when_nothing_is_there) {
    const auto ctrl = open();
    std::array<char, 16> buffer{};
    std::size_t length = 7;
    const Stopwatch watch;
    EXPECT_EQ(wpa_ctrl_recv(*ctrl, buffer.data(), length), -1);
    EXPECT_EQ(length, 7U);
    EXPECT_LT(watch.elapsed(), milliseconds(900));
    EXPECT_FALSE(wpa_ctrl_pending(*ctrl));
}

TEST_F(ControlClient, receives_one_message_after_the_other) {
    const auto ctrl = open();
    ASSERT_EQ(wpa_ctrl_attach(*ctrl), 0);
    supplicant_.send_event("<3>ONE");
    supplicant_.send_event("<3>AND TWO");
    EXPECT_TRUE(wpa_ctrl_pending(*ctrl));
    std::array<char, 16> buffer{};
    buffer.fill('#');
    std::size_t length = buffer.size();
    EXPECT_EQ(wpa_ctrl_recv(*ctrl, buffer.data(), length), 0);
    EXPECT_EQ(length, 6U);
    EXPECT_EQ(std::string(buffer.data(), 7), "<3>ONE#");
    length = 5;
    EXPECT_EQ(wpa_ctrl_recv(*ctrl, buffer.data(), length), 0);
    EXPECT_EQ(length, 5U);
    EXPECT_EQ(std::string(buffer.data(), 7), "<3>ANE#");
    EXPECT_FALSE(wpa_ctrl_pending(*ctrl));
}

// ---- closing -----------------------------------------------------------------------------------

TEST_F(ControlClient, leaves_two_trace_lines_when_it_closes) {
    ConsoleCapture console;
    auto ctrl = open();
    const int fd = ctrl->socket;
    const std::string name = ctrl->local.sun_path;
    ctrl.reset();
    EXPECT_EQ(console.out(),
              "[WIFI]Here at 217 wpa_ctrl_close...\nValue of sigterm_var is 0 ...\n");
    EXPECT_EQ(console.err(), "");
    EXPECT_FALSE(exists(name));
    EXPECT_EQ(::fcntl(fd, F_GETFD), -1);
}

TEST_F(ControlClient, keeps_its_record_while_the_process_is_being_ended) {
    ConsoleCapture console;
    static wpa_ctrl* kept = nullptr; // never freed, by design
    kept = open().release();
    const int fd = kept->socket;
    const std::string name = kept->local.sun_path;
    sigterm_var = 1;
    wpa_ctrl_close(kept);
    EXPECT_EQ(console.out(),
              "[WIFI]Here at 217 wpa_ctrl_close...\nValue of sigterm_var is 1 ...\n");
    EXPECT_FALSE(exists(name));
    EXPECT_EQ(::fcntl(fd, F_GETFD), -1);
    EXPECT_EQ(kept->local.sun_path, name);
}

TEST_F(ControlClient, closes_nothing_for_a_missing_connection) {
    ConsoleCapture console;
    wpa_ctrl_close(nullptr);
    wpa_ctrl_retire(nullptr);
    EXPECT_EQ(console.out(), "");
}

TEST_F(ControlClient, retires_a_connection_without_a_trace) {
    ConsoleCapture console;
    auto ctrl = open();
    const int fd = ctrl->socket;
    wpa_ctrl_retire(ctrl.release());
    EXPECT_EQ(console.out(), "");
    EXPECT_EQ(::fcntl(fd, F_GETFD), -1);
}

TEST_F(ControlSocket, cleanup_removes_every_client_socket_file_whoever_made_it) {
    const std::vector<std::string> removed{"/tmp/wpa_ctrl_1-1", "/tmp/wpa_ctrl_",
                                           "/tmp/wpa_ctrl_anything",
                                           "/tmp/wpa_ctrl_" + std::string(255 - 9, 'n')};
    const std::vector<std::string> kept{"/tmp/wpa_ctrl", "/tmp/wpa_ctr_1-1", "/tmp/xwpa_ctrl_1-1",
                                        "/tmp/WPA_CTRL_1-1"};
    for (const auto& names : {removed, kept}) {
        for (const auto& name : names) {
            ::close(::open(name.c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600));
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

TEST(OsStrlcpy, copies_what_fits_and_always_terminates) {
    std::array<char, 6> buffer{};
    buffer.fill('#');
    EXPECT_EQ(os_strlcpy(buffer.data(), "abc", 5), 3U);
    EXPECT_EQ(std::string(buffer.data(), 6), std::string("abc\0##", 6));
    buffer.fill('#');
    EXPECT_EQ(os_strlcpy(buffer.data(), "abcd", 5), 4U);
    EXPECT_EQ(std::string(buffer.data(), 6), std::string("abcd\0#", 6));
    buffer.fill('#');
    EXPECT_EQ(os_strlcpy(buffer.data(), "abcdefgh", 5), 8U);
    EXPECT_EQ(std::string(buffer.data(), 6), std::string("abcd\0#", 6));
    buffer.fill('#');
    EXPECT_EQ(os_strlcpy(buffer.data(), "abc", 1), 3U);
    EXPECT_EQ(std::string(buffer.data(), 2), std::string("\0#", 2));
    buffer.fill('#');
    EXPECT_EQ(os_strlcpy(buffer.data(), "abc", 0), 3U);
    EXPECT_EQ(buffer[0], '#');
    EXPECT_EQ(os_strlcpy(buffer.data(), "", 5), 0U);
    EXPECT_EQ(buffer[0], '\0');
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

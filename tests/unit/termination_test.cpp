// SPDX-License-Identifier: Apache-2.0
#include "children.hpp"
#include "common/process_state.hpp"
#include "ctrl/wpa_ctrl.hpp"
#include "process_fixture.hpp"
#include "run/results.hpp"
#include "run/termination.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <string>

namespace wivex {
namespace {

using namespace test_support;
using namespace testing;

constexpr const char* cleanup_without_connections =
    "[WIFI]Cleanup\n[WIFI]Set value of sigterm_var\n[WIFI]Closing the ctrl sockets\n"
    "[WIFI]Closing the Event sockets\n[WIFI]Reset Value of sigterm_var\n";

class Termination : public ControlSocketFixture {
protected:
    void SetUp() override {
        ControlSocketFixture::SetUp();
        result_path_ = directory_ / "result";
        run_options.result_file = result_path_;
        enable_test_case(run_options.results, test_case::module);
    }

    /// Runs the handler in a child, because it ends its process.
    int handle(int signal_number) const {
        return end_of_child(fork_child([&] {
                                termination_handler(signal_number);
                                return 99;
                            }),
                            milliseconds(5000));
    }

    std::string result_path_;
};

TEST_F(Termination, cleanup_prints_its_steps_when_nothing_is_open) {
    cleanup();
    EXPECT_EQ(console_.out(), cleanup_without_connections);
    EXPECT_EQ(console_.err(), "");
    EXPECT_EQ(sigterm_var, 0);
}

TEST_F(Termination, cleanup_closes_both_connections_without_detach) {
    FakeSupplicant supplicant(directory_ / "wlan0");
    static wpa_ctrl* kept_command = nullptr; // their records stay allocated, by design
    static wpa_ctrl* kept_event = nullptr;
    kept_command = wpa_ctrl_open((directory_ / "wlan0").c_str());
    kept_event = wpa_ctrl_open((directory_ / "wlan0").c_str());
    command_connection = kept_command;
    event_connection = kept_event;
    ASSERT_EQ(wpa_ctrl_attach(*event_connection), 0);
    cleanup();
    EXPECT_EQ(console_.out(),
              "[WIFI]Cleanup\n[WIFI]Set value of sigterm_var\n[WIFI]Closing the ctrl sockets\n"
              "[WIFI]Here at 217 wpa_ctrl_close...\nValue of sigterm_var is 1 ...\n"
              "[WIFI]Closing the Event sockets\n"
              "[WIFI]Here at 217 wpa_ctrl_close...\nValue of sigterm_var is 1 ...\n"
              "[WIFI]Reset Value of sigterm_var\n");
    EXPECT_EQ(command_connection, nullptr);
    EXPECT_EQ(event_connection, nullptr);
    EXPECT_EQ(sigterm_var, 0);
    EXPECT_FALSE(exists(kept_command->local.sun_path));
    EXPECT_FALSE(exists(kept_event->local.sun_path));
    EXPECT_THAT(supplicant.commands(), ElementsAre("ATTACH"));
}

TEST_F(Termination, of_an_interrupted_run_writes_the_results) {
    record_failure(run_options.results, 1, 0);
    EXPECT_EQ(handle(SIGINT), 0);
    EXPECT_EQ(console_.out(),
              "[WIFI] Got ^C. Writing results to file before quitting.Please hold on...\n"
              "[WIFI]user file name is " +
                  result_path_ + "\n[WIFI]ResultFile: " + result_path_ +
                  " Updated\n[WIFI] Before resultFile.flush call \n" + cleanup_without_connections +
                  "[WIFI] Done..\n");
    EXPECT_EQ(console_.err(), "");
    EXPECT_EQ(read_file(result_path_), "Test case 1 fail # 1\n");
}

TEST_F(Termination, of_an_interrupted_run_tells_of_the_flush_with_debug) {
    run_options.debug = 1;
    EXPECT_EQ(handle(SIGINT), 0);
    EXPECT_EQ(console_.out(),
              "[WIFI] Got ^C. Writing results to file before quitting.Please hold on...\n"
              "[WIFI]user file name is " +
                  result_path_ + "\n[WIFI]ResultFile: " + result_path_ +
                  " Updated\n[WIFI] Before resultFile.flush call \n"
                  "[WIFI]resultFile.flush() called\n" +
                  cleanup_without_connections + "[WIFI] Done..\n");
}

TEST_F(Termination, of_an_interrupted_run_writes_nothing_through_a_failed_stream) {
    run_options.result_stream.failed = true;
    EXPECT_EQ(handle(SIGINT), 0);
    EXPECT_EQ(
        console_.out(),
        std::string("[WIFI] Got ^C. Writing results to file before quitting.Please hold on...\n") +
            cleanup_without_connections + "[WIFI] Done..\n");
    EXPECT_FALSE(exists(result_path_));
}

TEST_F(Termination, of_an_interrupted_run_reports_a_result_file_that_cannot_be_opened) {
    run_options.result_file = directory_ / "absent/res";
    EXPECT_EQ(handle(SIGINT), 0);
    EXPECT_EQ(console_.err(), "[WIFI]Unable to open Result File: ");
    EXPECT_EQ(console_.out(),
              "[WIFI] Got ^C. Writing results to file before quitting.Please hold on...\n"
              "[WIFI]user file name is " +
                  run_options.result_file + "\n" + run_options.result_file +
                  "\n[WIFI] Before resultFile.flush call \n" + cleanup_without_connections +
                  "[WIFI] Done..\n");
}

class KilledRun : public Termination, public WithParamInterface<int> {};

TEST_P(KilledRun, writes_no_result_file) {
    run_options.chip_type = GetParam();
    EXPECT_EQ(handle(SIGTERM), 0);
    EXPECT_FALSE(exists(result_path_));
    const std::string chip = std::to_string(GetParam());
    const bool qca = GetParam() == 1 || GetParam() == 2;
    EXPECT_EQ(console_.out(), "[WIFI] Got Kill signal...\n[WIFI]Calling for chip --> " + chip +
                                  "\n" +
                                  (qca ? "[WIFI]WiFi Vendor is QCA 11n. Nothing to do.\n" : "") +
                                  cleanup_without_connections + "[WIFI] Done..\n");
    EXPECT_EQ(console_.err(), "");
}

INSTANTIATE_TEST_SUITE_P(Chips, KilledRun, Values(0, 1, 2, 4),
                         [](const auto& chip) { return "chip_" + std::to_string(chip.param); });

TEST_F(Termination, of_a_killed_run_reports_a_missing_loopback_switch) {
    if (exists("/sys/module/bcmdhd/parameters/usbloop_enable")) {
        GTEST_SKIP() << "this machine has a Broadcom driver";
    }
    for (const int chip : {3, 5}) {
        run_options.chip_type = chip;
        EXPECT_EQ(handle(SIGTERM), 0);
        EXPECT_EQ(console_.out(), "[WIFI] Got Kill signal...\n[WIFI]Calling for chip --> " +
                                      std::to_string(chip) + "\n" + cleanup_without_connections +
                                      "[WIFI] Done..\n");
        EXPECT_EQ(console_.err(), "[WIFI]Open error: No such file or directory\n");
    }
}

/// Stands a driver's loopback switch where the kernel would show it, in a mount namespace of the
/// calling process. False where that is not allowed.
bool provide_loopback_switch(const std::string& target) {
    const std::string directory = "/sys/module/bcmdhd/parameters";
    std::error_code failed;
    return ::unshare(CLONE_NEWNS) == 0 &&
           ::mount("none", "/", "none", MS_REC | MS_PRIVATE, nullptr) == 0 &&
           ::mount("module", "/sys/module", "tmpfs", 0, nullptr) == 0 &&
           std::filesystem::create_directories(directory, failed) &&
           ::symlink(target.c_str(), (directory + "/usbloop_enable").c_str()) == 0;
}

class BroadcomRun : public Termination, public WithParamInterface<int> {
protected:
    /// Runs the handler where the loopback switch is `target`, without the stream `closed`; false
    /// when that cannot be had.
    bool kill_with_switch(const std::string& target, int closed = -1) const {
        const int status = end_of_child(fork_child([&] {
                                            if (!provide_loopback_switch(target)) {
                                                return 77;
                                            }
                                            run_options.chip_type = GetParam();
                                            ::close(closed);
                                            termination_handler(SIGTERM);
                                            return 99;
                                        }),
                                        milliseconds(5000));
        EXPECT_THAT(status, AnyOf(0, 77));
        return status == 0;
    }
};

TEST_P(BroadcomRun, is_taken_out_of_loopback_mode_when_it_is_killed) {
    // A driver sees what is written, not what a file still holds behind it.
    const std::string loopback_switch = directory_.file("switch", "1");
    if (!kill_with_switch(loopback_switch)) {
        GTEST_SKIP() << "no mount namespaces";
    }
    EXPECT_EQ(console_.out(),
              "[WIFI] Got Kill signal...\n[WIFI]Calling for chip --> " +
                  std::to_string(GetParam()) +
                  "\n[WIFI]Write to file \"/sys/module/bcmdhd/parameters/usbloop_enable\" "
                  "success\n" +
                  cleanup_without_connections + "[WIFI] Done..\n");
    EXPECT_EQ(console_.err(), "");
    EXPECT_EQ(read_file(loopback_switch), "0\n");
    EXPECT_FALSE(exists(result_path_));
}

TEST_P(BroadcomRun, reports_a_loopback_switch_that_cannot_be_written) {
    if (!kill_with_switch("/dev/full")) {
        GTEST_SKIP() << "no mount namespaces";
    }
    EXPECT_EQ(console_.out(), "[WIFI] Got Kill signal...\n[WIFI]Calling for chip --> " +
                                  std::to_string(GetParam()) + "\n" + cleanup_without_connections +
                                  "[WIFI] Done..\n");
    EXPECT_EQ(console_.err(), "[WIFI]Write error: No space left on device\n");
}

// A descriptor of 0 counts as a failure: kept.
TEST_P(BroadcomRun, stays_in_loopback_mode_without_a_standard_input) {
    const std::string loopback_switch = directory_.file("switch", "1\n");
    if (!kill_with_switch(loopback_switch, STDIN_FILENO)) {
        GTEST_SKIP() << "no mount namespaces";
    }
    EXPECT_THAT(console_.err(), StartsWith("[WIFI]Open error: "));
    EXPECT_EQ(read_file(loopback_switch), "1\n");
}

TEST_P(BroadcomRun, is_taken_out_of_loopback_mode_without_a_standard_output) {
    const std::string loopback_switch = directory_.file("switch", "1\n");
    if (!kill_with_switch(loopback_switch, STDOUT_FILENO)) {
        GTEST_SKIP() << "no mount namespaces";
    }
    EXPECT_EQ(console_.err(), "");
    EXPECT_THAT(read_file(loopback_switch), StartsWith("0\n"));
}

INSTANTIATE_TEST_SUITE_P(Chips, BroadcomRun, Values(3, 5),
                         [](const auto& chip) { return "chip_" + std::to_string(chip.param); });

TEST(WithoutMemory, an_interrupted_run_tells_of_it_and_ends) {
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer ends a process without memory";
#endif
    ConsoleCapture console;
    const int child = fork_child([] {
        run_options.result_file = "/" + std::string(200'000, 'x');
        const rlimit none{1, 1};
        ::setrlimit(RLIMIT_AS, &none);
        termination_handler(SIGINT);
        return 99;
    });
    EXPECT_EQ(end_of_child(child, milliseconds(5000)), 0);
    EXPECT_EQ(console.out(), "[WIFI] Got ^C. Writing results to file before quitting.Please hold "
                             "on...\n");
    EXPECT_EQ(console.err(), "[WIFI]Out of memory\n");
}

TEST_F(Termination, by_another_signal_only_cleans_up) {
    EXPECT_EQ(handle(SIGHUP), 0);
    EXPECT_EQ(console_.out(), std::string(cleanup_without_connections) + "[WIFI] Done..\n");
    EXPECT_FALSE(exists(result_path_));
}

} // namespace
} // namespace wivex

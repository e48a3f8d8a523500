// SPDX-License-Identifier: Apache-2.0
// A judge that could not say "bad" would be worth nothing: each kind of bad end, and the legal ends
// beside it.

#include "fault_verdict.hpp"

#include <gtest/gtest.h>

#include <string>

namespace faults {
namespace {

using namespace bench_test;

const std::string begin = "\n[WIFI]Chip type is = 3\n"
                          "[WIFI]MODULE CONNECTED\n"
                          "[WIFI]WIFI DRIVER READY\n";
const std::string saved = "[WIFI]ResultFile: /root/WIFIResult Updated\n";
const std::string session_closed =
    "[WIFI]Here at 217 wpa_ctrl_close...\nValue of sigterm_var is 0 ...\n"
    "[WIFI]Here at 217 wpa_ctrl_close...\nValue of sigterm_var is 0 ...\n";
const std::string passed = "Test case 1 passed \nTest case 2 passed \nTest case 8 passed \n";
const std::string failed = "Test case 1 passed \nTest case 2 passed \nTest case 8 fail # 1\n";

Fault fault_of(const std::string& mode, const std::string& name = "openat",
               const std::string& arguments = "AT_FDCWD") {
    return {find_mode(mode), {name, 1, arguments, "", true}, "error=EMFILE"};
}

BenchRun run_with(const std::string& console, const std::string& results) {
    BenchRun run;
    run.status = 0;
    run.out = console;
    run.files["calls"] = "openat(AT_FDCWD) = -1 EMFILE (Too many open files) (INJECTED)\n";
    if (!results.empty()) {
        run.files["root/WIFIResult"] = results;
    }
    return run;
}

BenchRun whole_wlan() {
    BenchRun run = run_with(begin + "Call to SELECT_NETWORK is Successful...\n" + saved, passed);
    run.files["supplicant.log"] = "1 2 \"SCAN\"\n2 2 \"SELECT_NETWORK 0 \"\n";
    return run;
}

Outcome outcome_of_wlan(const BenchRun& run) {
    return judge(fault_of("w"), whole_wlan(), run).outcome;
}

TEST(FaultVerdict, is_good_for_a_run_that_the_fault_did_not_disturb) {
    EXPECT_EQ(outcome_of_wlan(whole_wlan()), Outcome::good);
}

TEST(FaultVerdict, is_good_for_a_failure_that_is_told_and_recorded) {
    const BenchRun run = run_with(begin + "ERROR:SCAN-FAIL\n" + session_closed + saved, failed);
    EXPECT_EQ(outcome_of_wlan(run), Outcome::good);
}

TEST(FaultVerdict, is_a_crash_for_a_signal_or_a_foreign_status) {
    BenchRun run = whole_wlan();
    run.status = 128 + 11;
    EXPECT_EQ(outcome_of_wlan(run), Outcome::crash);
    run.status = 128 + 6;
    EXPECT_EQ(outcome_of_wlan(run), Outcome::crash);
    run.status = 1;
    EXPECT_EQ(outcome_of_wlan(run), Outcome::crash);
    run.out += "err ReadTargetRange failed\n";
    EXPECT_EQ(outcome_of_wlan(run), Outcome::good);
}

TEST(FaultVerdict, is_a_hang_for_a_run_that_did_not_end) {
    BenchRun run = whole_wlan();
    run.timed_out = true;
    EXPECT_EQ(outcome_of_wlan(run), Outcome::hang);
}

TEST(FaultVerdict, is_no_verdict_where_no_call_failed) {
    BenchRun run = whole_wlan();
    run.files["calls"] = "openat(AT_FDCWD) = 3\n";
    EXPECT_EQ(outcome_of_wlan(run), Outcome::not_tried);
    run.status = 125;
    EXPECT_EQ(outcome_of_wlan(run), Outcome::not_tried);
}

TEST(FaultVerdict, is_lost_without_a_result_file_and_without_a_word) {
    EXPECT_EQ(outcome_of_wlan(run_with(begin, "")), Outcome::lost_verdict);
    EXPECT_EQ(outcome_of_wlan(run_with(begin + "[WIFI]Unable to open Result File: ", "")),
              Outcome::good);
}

TEST(FaultVerdict, is_lost_when_the_result_file_is_cut_and_called_saved) {
    const std::string part = "Test case 1 passed \nTest case 2 passed \n";
    EXPECT_EQ(outcome_of_wlan(run_with(begin + saved, part)), Outcome::lost_verdict);
    EXPECT_EQ(outcome_of_wlan(run_with(begin + saved, passed.substr(0, 50))),
              Outcome::lost_verdict);
    EXPECT_EQ(outcome_of_wlan(run_with(begin, part)), Outcome::lost_verdict);
    EXPECT_EQ(outcome_of_wlan(run_with(begin + "[WIFI]Unable to write Result File: x\n", part)),
              Outcome::good);
}

TEST(FaultVerdict, is_false_for_a_pass_after_a_failure_that_was_shown) {
    const BenchRun run = run_with(begin + "ERROR:SCAN-FAIL\n" + session_closed + saved, passed);
    EXPECT_EQ(outcome_of_wlan(run), Outcome::false_verdict);
}

TEST(FaultVerdict, is_false_for_a_failure_that_nothing_shows) {
    const BenchRun run = run_with(begin + session_closed + saved, failed);
    EXPECT_EQ(outcome_of_wlan(run), Outcome::false_verdict);
}

TEST(FaultVerdict, is_false_for_a_pass_without_a_step_and_without_a_word) {
    BenchRun run = whole_wlan();
    run.files["supplicant.log"] = "1 2 \"SCAN\"\n";
    EXPECT_EQ(outcome_of_wlan(run), Outcome::false_verdict);
    run.out = "Fail to run dhclient!!!\n" + run.out;
    EXPECT_EQ(outcome_of_wlan(run), Outcome::good);
}

TEST(FaultVerdict, is_false_for_a_pass_without_the_line_of_a_step) {
    BenchRun run = whole_wlan();
    run.out = begin + saved;
    EXPECT_EQ(outcome_of_wlan(run), Outcome::false_verdict);
}

TEST(FaultVerdict, forgives_a_line_that_was_lost_when_the_results_are_the_same) {
    const Fault lost{find_mode("w"), {"write", 7, "", "", true}, "error=EPIPE"};
    BenchRun run = whole_wlan();
    run.out = begin + saved;
    run.files["calls"] =
        "write(1<pipe:[7]>, \"Call to\"..., 40) = -1 EPIPE (Broken pipe) (INJECTED)\n";
    EXPECT_EQ(judge(lost, whole_wlan(), run).outcome, Outcome::good);
    run.files["root/WIFIResult"] = failed;
    EXPECT_EQ(judge(lost, whole_wlan(), run).outcome, Outcome::false_verdict);
    run.files.erase("root/WIFIResult");
    EXPECT_EQ(judge(lost, whole_wlan(), run).outcome, Outcome::lost_verdict);
}

TEST(FaultVerdict, looks_at_the_call_that_really_failed) {
    const Fault meant{find_mode("w"), {"write", 7, "1<pipe:[7]>", "", true}, "error=EPIPE"};
    BenchRun run = run_with(begin + "[WIFI]Unable to write Result File: x\n", "");
    run.files["calls"] =
        "write(5</root/WIFIResult>, \"T\", 1) = -1 EPIPE (Broken pipe) (INJECTED)\n";
    EXPECT_EQ(judge(meant, whole_wlan(), run).outcome, Outcome::good);
    const Fault close{find_mode("w"), {"close", 7, "5</tmp/output>", "", true}, "error=EIO"};
    run.files["calls"] = "close(5<pipe:[7]>) = -1 EIO (Input/output error) (INJECTED)\n";
    EXPECT_EQ(judge(close, whole_wlan(), run).outcome, Outcome::not_tried);
}

TEST(FaultVerdict, is_false_for_a_pass_over_a_listing_that_is_cut) {
    const std::string results = "Test case 1 passed \nTest case 2 passed \nTest case 5 passed \n";
    BenchRun whole = run_with(begin + "[WIFI]SCAN SUCCESS\n" + saved, results);
    whole.files["tmp/output"] = "BSS 1\nBSS 2\n";
    BenchRun run = whole;
    EXPECT_EQ(judge(fault_of("S"), whole, run).outcome, Outcome::good);
    run.files["tmp/output"] = "BSS 1\n";
    EXPECT_EQ(judge(fault_of("S"), whole, run).outcome, Outcome::false_verdict);
}

TEST(FaultVerdict, is_false_for_a_shielded_room_that_is_none) {
    const std::string results = "Test case 1 passed \nTest case 2 passed \nTest case 5 passed \n";
    const BenchRun whole = run_with(begin + "[WIFI]SCAN SUCCESS\n" + saved, results);
    const BenchRun run = run_with(begin +
                                      "[WIFI]File error: Input/output error\n"
                                      "[WIFI]SCAN SUCCESS AND RUN IN SHIELD ROOM\n" +
                                      saved,
                                  results);
    EXPECT_EQ(judge(fault_of("S"), whole, run).outcome, Outcome::false_verdict);
}

TEST(FaultVerdict, of_softap_goes_with_the_driver) {
    const std::string problem = "[WIFI]ERROR:create softAP problem\n";
    const std::string created = "[WIFI]softAP created successfuly.\n";
    const BenchRun whole = run_with(begin + problem, "");
    const auto outcome = [&whole](const std::string& console) {
        return judge(fault_of("A"), whole, run_with(console, "")).outcome;
    };
    EXPECT_EQ(outcome(begin + problem), Outcome::good);
    EXPECT_EQ(outcome(begin + created), Outcome::false_verdict);
    EXPECT_EQ(outcome(begin + problem + created), Outcome::false_verdict);
    EXPECT_EQ(outcome(begin), Outcome::lost_verdict);
    EXPECT_EQ(outcome(created), Outcome::good);
}

TEST(FaultVerdict, of_a_kill_asks_for_its_end_and_for_no_results) {
    const std::string taken = begin + "[WIFI] Got Kill signal...\n";
    BenchRun whole = run_with(taken + "[WIFI] Done..\n", "");
    whole.files["parameters/usbloop_enable"] = "0\n";
    const auto outcome = [&whole](const BenchRun& run) {
        return judge(fault_of("w-killed"), whole, run).outcome;
    };
    EXPECT_EQ(outcome(whole), Outcome::good);
    BenchRun run = whole;
    run.out = taken;
    EXPECT_EQ(outcome(run), Outcome::lost_verdict);
    run = whole;
    run.files["root/WIFIResult"] = passed;
    EXPECT_EQ(outcome(run), Outcome::false_verdict);
    run = whole;
    run.files["parameters/usbloop_enable"] = "1\n";
    EXPECT_EQ(outcome(run), Outcome::false_verdict);
    run.out = taken + "[WIFI]Open error: Too many open files\n[WIFI] Done..\n";
    EXPECT_EQ(outcome(run), Outcome::good);
}

TEST(FaultVerdict, of_a_run_that_failed_before_its_kill_is_that_of_its_results) {
    const BenchRun whole = run_with(begin + "[WIFI] Got Kill signal...\n[WIFI] Done..\n", "");
    const BenchRun run = run_with(begin + "unable to open sockets\n" + saved,
                                  "Test case 1 passed \nTest case 2 passed \n"
                                  "Test case 8 fail # 2\n");
    EXPECT_EQ(judge(fault_of("w-killed"), whole, run).outcome, Outcome::good);
    BenchRun silent = run;
    silent.files.erase("root/WIFIResult");
    EXPECT_EQ(judge(fault_of("w-killed"), whole, silent).outcome, Outcome::lost_verdict);
}

} // namespace
} // namespace faults

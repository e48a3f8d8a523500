// SPDX-License-Identifier: Apache-2.0
// What a verdict says for itself: everything that keeps a run from being a good one, word for word.

#include "consoles.hpp"
#include "model/verdict.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace report_test;
using namespace wivex::report;
using testing::ElementsAre;

std::vector<std::string> missing_in(const std::string& console) {
    return judge(read_run(console)).missing;
}

std::string sentence_of(const std::string& console) {
    return verdict_sentence(read(console));
}

const std::string broken_off = banner + legacy_pass + checks_pass;

// ---- A failed run

TEST(FailedRunSays, that_it_did_not_start) {
    const std::string console = banner + "[WIFI]Configuration file problem.Plese check x\n";
    EXPECT_THAT(missing_in(console), ElementsAre("the tool ended before its first iteration",
                                                 "no iteration is in this console"));
    EXPECT_EQ(sentence_of(console), "The run did not start");
}

TEST(FailedRunSays, how_many_iterations_failed) {
    EXPECT_THAT(missing_in(mixed), ElementsAre("1 of 3 iterations failed"));
    EXPECT_EQ(sentence_of(mixed), "1 of 3 iterations failed");
    EXPECT_TRUE(judge(read_run(mixed)).whole);
}

TEST(FailedRunSays, which_result_was_lost) {
    const std::string console = banner + legacy_pass + "[WIFI]Out of memory\n" + end;
    EXPECT_THAT(missing_in(console),
                ElementsAre("the tool lost results or ended early: \"[WIFI]Out of memory\""));
    EXPECT_EQ(sentence_of(console),
              "The tool lost results or ended early: \"[WIFI]Out of memory\"");
    EXPECT_FALSE(judge(read_run(console)).whole);
}

TEST(FailedRunSays, how_often_something_failed_that_the_tool_does_not_count) {
    EXPECT_THAT(missing_in(banner + without_address + without_address + end),
                ElementsAre("no address by DHCP: 2 times; the test went on, and the result file "
                            "does not count it"));
}

TEST(FailedRunSays, what_failed_at_the_interrupt) {
    const std::string console = banner + checks_pass + "ERROR:SCAN-FAIL\n" + interrupt;
    EXPECT_THAT(missing_in(console),
                ElementsAre("SCAN refused: 1 time at the interrupt, before the tool counted it",
                            "1 iteration did not come to the end",
                            "the mode showed a pass in only 0 of 1 iteration"));
    EXPECT_EQ(sentence_of(console),
              "SCAN refused: 1 time at the interrupt, before the tool counted it");
}

TEST(FailedRunSays, its_first_cause_with_a_capital) {
    const std::string console = banner + group_began +
                                "Client connected 1.\n"
                                "Client not able to connect...continuing \n" +
                                interrupt;
    EXPECT_EQ(sentence_of(console), "Peer asked to join and did not connect: 1 time; the test "
                                    "went on, and the result file does not count it");
}

TEST(FailedRunSays, how_many_failures_were_recorded_when_no_iteration_shows_them) {
    auto run = read_run(passed_run);
    run.causes.at(index_of(Cause::scan_rejected)).failures = 1;
    EXPECT_THAT(judge(run).missing, ElementsAre("1 failure was recorded"));
    EXPECT_EQ(judge(run).verdict, RunVerdict::failed);
    run.causes.at(index_of(Cause::scan_rejected)).failures = 2;
    EXPECT_THAT(judge(run).missing, ElementsAre("2 failures were recorded"));
}

TEST(FailedRunSays, how_often_something_failed_at_the_interrupt) {
    auto run = read_run(passed_run);
    run.causes.at(index_of(Cause::scan_rejected)).unrecorded = 2;
    EXPECT_THAT(judge(run).missing,
                ElementsAre("SCAN refused: 2 times at the interrupt, before the tool counted it"));
}

// ---- A run of which something is missing

TEST(UnknownRunSays, that_its_beginning_or_its_end_is_not_there) {
    EXPECT_THAT(missing_in(legacy_pass + end),
                ElementsAre("the beginning of the run is not in this console"));
    EXPECT_THAT(missing_in(without(passed_run, "[WIFI]Reset Value of sigterm_var\n")),
                ElementsAre("the end of the tool is not in this console"));
    EXPECT_EQ(sentence_of(without(passed_run, "[WIFI]Reset Value of sigterm_var\n")),
              "Not known: the end of the tool is not in this console; "
              "1 of 1 iteration passed, none failed");
}

TEST(UnknownRunSays, that_the_console_ends_before_it) {
    EXPECT_THAT(missing_in(broken_off),
                ElementsAre("the console ends in the middle of the run",
                            "no result file was announced", "1 iteration did not come to the end",
                            "the mode showed a pass in only 1 of 2 "
                            "iterations"));
    EXPECT_EQ(sentence_of(broken_off), "Not known: the console ends in the middle of the run; "
                                       "1 of 2 iterations passed, none failed");
}

TEST(UnknownRunSays, that_another_one_began) {
    EXPECT_THAT(judge(read(broken_off + passed_run).runs.front()).missing,
                ElementsAre("the run broke off: another one begins before its end",
                            "no result file was announced", "1 iteration did not come to the end",
                            "the mode showed a pass in only 1 of 2 iterations"));
}

TEST(UnknownRunSays, that_it_was_killed) {
    EXPECT_THAT(missing_in(banner + legacy_pass + "[WIFI] Got Kill signal...\n" + clean_up +
                           "[WIFI] Done..\n"),
                ElementsAre("the run was killed", "no result file was announced"));
}

TEST(UnknownRunSays, which_lines_nobody_knows) {
    const std::string line = "[WIFI]A line of next year\n";
    EXPECT_THAT(missing_in(banner + legacy_pass + line + end),
                ElementsAre("1 line of the tool that this program does not know: "
                            "\"[WIFI]A line of next year\""));
    EXPECT_THAT(missing_in(banner + legacy_pass + line + "[WIFI]Another\n" + end),
                ElementsAre("2 lines of the tool that this program does not know: "
                            "\"[WIFI]A line of next year\""));
}

TEST(UnknownRunSays, which_check_has_no_verdict) {
    const std::string mac = checks_pass + "[WIFI]Result file direcotry is /root/\n";
    const std::string loopback = checks_pass + "[WIFI]LOOPBACK SUCCESS\n";
    EXPECT_THAT(missing_in(without(passed_run, "[WIFI]MODULE CONNECTED\n")),
                ElementsAre("1 iteration did not come to the end",
                            "the module check has a verdict in only 0 of 1 iteration"));
    EXPECT_THAT(missing_in(without(passed_run, "[WIFI]WIFI DRIVER READY\n")),
                ElementsAre("1 iteration did not come to the end",
                            "the driver check has a verdict in only 0 of 1 iteration"));
    EXPECT_THAT(missing_in(banner + mac + "[WIFI]MAC PRINT SUCCESS\n" + mac + end),
                ElementsAre("1 iteration did not come to the end",
                            "the mac check has a verdict in only 1 of 2 iterations"));
    EXPECT_THAT(missing_in(banner + loopback + checks_pass + end),
                ElementsAre("the loopback check has a verdict in only 1 of 2 iterations"));
}

TEST(UnknownRunSays, that_no_mode_was_seen) {
    EXPECT_THAT(missing_in(banner + checks_pass + end),
                ElementsAre("the console does not tell which mode ran"));
}

TEST(UnknownRunSays, that_iterations_are_missing) {
    ReaderOptions options;
    options.iterations = 3;
    EXPECT_THAT(judge(read_run(banner + legacy_pass + legacy_pass + end, options)).missing,
                ElementsAre("only 2 of 3 iterations began"));
    EXPECT_THAT(missing_in(banner + end), ElementsAre("no iteration is in this console"));
    EXPECT_EQ(sentence_of(banner + end), "Not known: no iteration is in this console");
    EXPECT_EQ(sentence_of(banner + interrupt), "Not known: no iteration is in this console");
}

TEST(UnknownRunSays, what_the_softap_mode_never_shows) {
    EXPECT_THAT(missing_in(banner + checks_pass + "[WIFI]softAP created successfuly.\n" + end),
                ElementsAre("the softAP mode writes no result file and tries no access point"));
    EXPECT_THAT(missing_in(banner + checks_pass + "[WIFI]ERROR:create softAP problem\n"),
                ElementsAre("the softAP mode writes no result file and tries no access point"));
}

TEST(UnknownRunSays, that_a_group_of_its_own_ended_by_itself) {
    EXPECT_THAT(missing_in(banner + group_began + session_closes + end),
                ElementsAre("1 iteration did not come to the end", "the group ended by itself",
                            "no client was served"));
    EXPECT_THAT(missing_in(banner + group_began + "Client connected 1.\n" + session_closes + end),
                ElementsAre("1 iteration did not come to the end", "the group ended by itself"));
}

// ---- An interrupted run, and a good one

TEST(InterruptedRunSays, that_it_was_ended) {
    EXPECT_THAT(missing_in(broken_off + interrupt),
                ElementsAre("the run was ended by ^C", "1 iteration did not come to the end",
                            "the mode showed a pass in only 1 of 2 iterations"));
    EXPECT_THAT(missing_in(banner + group_began + interrupt),
                ElementsAre("the run was ended by ^C", "no client was served"));
}

TEST(InterruptedRunSays, nothing_of_the_interrupt_when_its_beginning_is_not_there) {
    EXPECT_EQ(sentence_of(legacy_pass + checks_pass + interrupt),
              "Not known: the beginning of the run is not in this console; "
              "1 of 2 iterations passed, none failed");
}

TEST(PassedRunSays, how_many_iterations_passed_with_a_warning) {
    const std::string heard_nothing = checks_pass + "[WIFI]SCAN SUCCESS AND RUN IN SHIELD ROOM\n";
    EXPECT_EQ(sentence_of(banner + heard_nothing + end), "The iteration passed, 1 with a warning");
    EXPECT_EQ(sentence_of(banner + heard_nothing + legacy_pass + end),
              "All 2 iterations passed, 1 with a warning");
}

TEST(PassedRun, has_an_outcome_for_every_iteration) {
    auto run = read_run(banner + checks_pass + "[WIFI]LOOPBACK SUCCESS\n" + checks_pass +
                        "[WIFI]LOOPBACK SUCCESS\n" + end);
    EXPECT_EQ(judge(run).verdict, RunVerdict::passed);
    run.outcomes.at(static_cast<std::size_t>(Outcome::passed)) = 1;
    EXPECT_THAT(judge(run).missing, ElementsAre("1 iteration did not come to the end"));
    EXPECT_EQ(judge(run).verdict, RunVerdict::unknown);
}

TEST(PassedRunSays, how_many_iterations_passed) {
    EXPECT_EQ(sentence_of(passed_run), "The iteration passed");
    EXPECT_EQ(sentence_of(banner + legacy_pass + legacy_pass + end), "All 2 iterations passed");
    EXPECT_TRUE(judge(read_run(passed_run)).whole);
}

// ---- Several runs

TEST(SeveralRunsSay, the_bad_ones_first) {
    EXPECT_EQ(sentence_of(passed_run + broken_off + interrupt + passed_run + broken_off + banner +
                          refused + end),
              "5 runs: 1 failed, 1 not known, 1 interrupted, 2 passed");
    EXPECT_EQ(sentence_of(passed_run + passed_run), "2 runs: 2 passed");
    EXPECT_EQ(sentence_of("nothing of the tool\n"), "No run on this console");
}

TEST(SeveralRuns, have_the_worst_verdict_of_them) {
    EXPECT_EQ(judge(read(passed_run + broken_off + interrupt + passed_run)),
              RunVerdict::interrupted);
    EXPECT_EQ(judge(read(broken_off + interrupt + broken_off + passed_run)), RunVerdict::unknown);
    EXPECT_EQ(judge(read(broken_off + banner + refused + end)), RunVerdict::failed);
    EXPECT_EQ(judge(read(passed_run + passed_run)), RunVerdict::passed);
}

} // namespace

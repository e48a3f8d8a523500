// SPDX-License-Identifier: Apache-2.0
// A run.json for a comparison, also one that somebody made up.

#include "consoles.hpp"
#include "reader/run_file.hpp"
#include "writers/json_writer.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace {

using namespace report_test;
using namespace wivex::report;
using namespace testing;

std::string problem_with(std::string_view content) {
    Reported reported;
    return read_run_file(content, reported);
}

// A report with one thing changed.
std::string changed(std::string_view from, std::string_view to) {
    std::string text = write_json(read(mixed));
    const std::size_t place = text.find(from);
    EXPECT_NE(place, std::string::npos) << from;
    return text.replace(place, from.size(), to);
}

TEST(RunFile, is_read_as_the_report_wrote_it) {
    Reported reported;
    ASSERT_EQ(read_run_file(write_json(read(mixed)), reported), "");
    EXPECT_EQ(reported.mode, "legacy-wlan");
    EXPECT_EQ(reported.verdict, "failed");
    EXPECT_EQ(reported.iterations, 3U);
    EXPECT_EQ(reported.iterations_kept, 3U);
    EXPECT_EQ(reported.failed, 1U);
    EXPECT_THAT(reported.throughput, ElementsAre(94, 94));
    EXPECT_THAT(reported.phases.at(index_of(Phase::dhcp)), IsEmpty()) << "no times";
    ASSERT_EQ(reported.causes.count("scan-rejected"), 1U);
    EXPECT_EQ(reported.causes.at("scan-rejected").count, 1U);
    EXPECT_EQ(reported.causes.at("scan-rejected").words, "SCAN refused");
}

TEST(RunFile, has_the_times_of_what_was_completed) {
    RunReader reader({Mode::unknown, true});
    reader.feed(banner, 0);
    for (int i = 0; i < 3; ++i) {
        reader.feed(checks_pass, 20 * i);
        reader.feed(scan_and_associate + take_address + traffic, 20 * i + 5);
        reader.feed(disconnect + session_closes, 20 * i + 9);
    }
    reader.feed(checks_pass + "Scan Command not successful\nERROR:SCAN-FAIL\n" + session_closes,
                60);
    reader.feed(end, 63);
    reader.finish(63);
    Reported reported;
    ASSERT_EQ(read_run_file(write_json(reader.log()), reported), "");
    EXPECT_THAT(reported.phases.at(index_of(Phase::scan)), ElementsAre(5, 5, 5));
    EXPECT_THAT(reported.phases.at(index_of(Phase::disconnect)), ElementsAre(4, 4, 4));
    EXPECT_THAT(reported.seconds, SizeIs(4));
}

TEST(RunFile, is_all_its_runs_together) {
    Reported reported;
    ASSERT_EQ(read_run_file(write_json(read(mixed + mixed)), reported), "");
    EXPECT_EQ(reported.runs, 2U);
    EXPECT_EQ(reported.iterations, 6U);
    EXPECT_EQ(reported.failed, 2U);
}

TEST(RunFile, of_several_modes_is_refused) {
    EXPECT_EQ(
        problem_with(write_json(read(mixed + banner + checks_pass + "[WIFI]SCAN SUCCESS\n" + end))),
        "runs of several modes, legacy-wlan and scan");
}

TEST(RunFile, is_refused_when_it_is_none) {
    EXPECT_THAT(problem_with(""), StartsWith("no valid JSON near byte"));
    EXPECT_THAT(problem_with("{"), StartsWith("no valid JSON near byte"));
    EXPECT_THAT(problem_with(std::string("\x1f\x8b\0\0", 4)), StartsWith("no valid JSON"));
    EXPECT_THAT(problem_with("{} {}"), StartsWith("no valid JSON"));
    EXPECT_EQ(problem_with("[]"), "it is no run.json of wivex-report");
    EXPECT_EQ(problem_with("7"), "it is no run.json of wivex-report");
    EXPECT_EQ(problem_with("{\"runs\": [{}]}"), "a run whose counts do not fit together");
    EXPECT_EQ(problem_with(changed("\"wivex-report\"", "\"other\"")),
              "it is no run.json of wivex-report");
    EXPECT_EQ(problem_with(changed("\"version\": 2", "\"version\": 3")),
              "its version is not known");
    EXPECT_EQ(problem_with(write_json(read(""))), "it holds no run");
}

TEST(RunFile, is_refused_when_its_counts_do_not_fit) {
    EXPECT_EQ(problem_with(changed("\"iterations_started\": 3", "\"iterations_started\": 4")),
              "a run whose counts do not fit together");
    EXPECT_EQ(problem_with(changed("\"iterations_started\": 3", "\"iterations_started\": -3")),
              "a count that is none");
    EXPECT_EQ(problem_with(changed("\"iterations_started\": 3", "\"iterations_started\": 3.5")),
              "a count that is none");
    EXPECT_EQ(problem_with(changed("\"iterations_started\": 3", "\"iterations_started\": 1e300")),
              "a count that is none");
    EXPECT_THAT(problem_with(changed("\"iterations_started\": 3", "\"iterations_started\": 1e999")),
                StartsWith("no valid JSON"));
    EXPECT_EQ(problem_with(changed("\"throughput\": 94.0,", "\"throughput\": -1e99,")),
              "a figure that is none");
}

TEST(RunFile, takes_no_member_of_another_place) {
    Reported reported;
    ASSERT_EQ(read_run_file(changed("\"version\": 2",
                                    "\"x\": {\"runs\": [{\"mode\": \"scan\"}]}, \"runs/*/mode\": "
                                    "\"scan\", \"version\": 2"),
                            reported),
              "");
    EXPECT_EQ(reported.mode, "legacy-wlan");
}

TEST(RunFile, shows_no_control_characters) {
    Reported reported;
    ASSERT_EQ(read_run_file(changed("\"version\": 2", "\"identity\": {\"serial\": \"\\u001b[2J\"}, "
                                                      "\"version\": 2"),
                            reported),
              "");
    EXPECT_EQ(reported.serial, "\\x1b[2J");
}

TEST(RunFile, is_refused_when_it_is_nested_too_deep) {
    EXPECT_EQ(problem_with(std::string(1000000, '[')), "it is nested too deep");
    std::string objects;
    for (int i = 0; i < 100000; ++i) {
        objects += "{\"a\":";
    }
    EXPECT_EQ(problem_with(objects), "it is nested too deep");
}

TEST(RunFile, is_refused_when_it_holds_more_than_a_report) {
    std::string iterations;
    for (int i = 0; i <= 5000; ++i) {
        iterations += "{\"iteration\": 1},";
    }
    const std::string run =
        "{\"format\":\"wivex-report\",\"version\":2,\"runs\":[{\"mode\":\"scan\","
        "\"iterations_started\":9000,\"outcomes\":{\"passed\":9000},"
        "\"iterations\":[";
    EXPECT_EQ(problem_with(run + iterations + "{}]}]}"), "more iterations than a report lists");
    std::string runs;
    for (int i = 0; i < 9; ++i) {
        runs += mixed;
    }
    Reported reported;
    EXPECT_EQ(read_run_file(write_json(read(runs)), reported), "");
    EXPECT_EQ(reported.runs_left_out, 1U);
}

} // namespace

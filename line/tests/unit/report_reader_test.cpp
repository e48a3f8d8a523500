// SPDX-License-Identifier: Apache-2.0
#include "reader/report_reader.hpp"
#include "written_report.hpp"

#include <gmock/gmock.h>

namespace wivex::line {

namespace {

using testing::HasSubstr;

struct Read {
    ReadResult result = ReadResult::unreadable;
    Report report;
    std::string reason;
};

Read read(const std::string& text) {
    Read read;
    read.result = read_report(text, "", read.report, read.reason);
    return read;
}

std::string with(const std::function<void(nlohmann::ordered_json&)>& change) {
    nlohmann::ordered_json document = WrittenReport().json();
    change(document);
    return document.dump();
}

TEST(ReportReader, reads_who_was_tested_and_what_came_out) {
    const Read good = read(WrittenReport().text());
    ASSERT_EQ(good.reason, "");
    EXPECT_EQ(good.report.serial, "4711");

    ASSERT_EQ(good.report.runs.size(), 1U);
    const RunRecord& run = good.report.runs.front();
    EXPECT_TRUE(run.passed());
    EXPECT_EQ(run.count(run_place("attempt")), 1);
    EXPECT_EQ(run.text(run_place("cause")), "");
    EXPECT_EQ(run.row[run_place("throughput_mean_mbit_s")], Value(90.0));
    EXPECT_EQ(run.row[run_place("associate_mean_s")], Value(2.0));
    EXPECT_EQ(run.count(run_place("began_utc_s")), 1795168800);
}

TEST(ReportReader, tells_the_cause_of_the_first_failure) {
    const Read failed = read(WrittenReport{.verdict = "failed", .cause = "scan-rejected"}.text());
    ASSERT_EQ(failed.reason, "");
    EXPECT_FALSE(failed.report.runs.front().passed());
    EXPECT_EQ(failed.report.runs.front().text(run_place("cause")), "scan-rejected");
}

TEST(ReportReader, takes_no_run_for_a_pass_that_was_killed_or_broke_off_or_was_not_saved) {
    for (const char* const end : {"killed", "broke-off", "open", "interrupted", "not-started"}) {
        const Read other = read(WrittenReport{.end = end, .verdict = "unknown"}.text());
        ASSERT_EQ(other.reason, "") << end;
        EXPECT_FALSE(other.report.runs.front().passed()) << end;
        EXPECT_EQ(other.report.runs.front().text(run_place("cause")), end);
    }
    const Read unsaved = read(with([](auto& document) {
        document["verdict"] = document["runs"][0]["verdict"] = "unknown";
        document["runs"][0]["clean"] = false;
        document["runs"][0]["result_file_written"] = false;
    }));
    EXPECT_EQ(unsaved.report.runs.front().text(run_place("cause")), "not-saved");
}

TEST(ReportReader, refuses_a_pass_that_the_rest_speaks_against) {
    const auto contradicts = [](const char* pointer, const nlohmann::json& value) {
        const Read other = read(with([&](auto& document) {
            document[nlohmann::ordered_json::json_pointer(pointer)] = value;
        }));
        EXPECT_EQ(other.result, ReadResult::unreadable) << pointer;
        EXPECT_THAT(other.reason, HasSubstr("verdict")) << pointer;
    };
    contradicts("/runs/0/clean", false);
    contradicts("/runs/0/end", "killed");
    contradicts("/runs/0/outcomes/passed", 2);
    contradicts("/runs/0/verdict", "failed");
    contradicts("/runs/0/verdict", "green");
    contradicts("/runs/0/limits_verdict", "fine");
}

TEST(ReportReader, takes_no_run_outside_its_limits_for_a_pass) {
    for (const char* const verdict : {"outside", "unknown"}) {
        const Read other = read(with([&](auto& document) {
            document["runs"][0]["limits_verdict"] = verdict;
            document["runs"][0]["limits"] = {{{"name", "throughput"},
                                              {"operator", ">="},
                                              {"limit", 95},
                                              {"unit", "Mbit/s"},
                                              {"value", nullptr},
                                              {"verdict", verdict}}};
        }));
        ASSERT_EQ(other.reason, "");
        EXPECT_FALSE(other.report.runs.front().passed());
        EXPECT_EQ(other.report.runs.front().text(run_place("cause")),
                  std::string("limits-") + verdict);
    }
}

TEST(ReportReader, takes_no_run_for_a_pass_when_the_report_left_a_bad_one_out) {
    const Read other = read(with([](auto& document) { document["verdict"] = "failed"; }));
    ASSERT_EQ(other.reason, "");
    EXPECT_FALSE(other.report.runs.front().passed());
    EXPECT_EQ(other.report.runs.front().text(run_place("cause")), "left-out-run");
}

TEST(ReportReader, says_that_the_unit_is_not_named) {
    const Read nameless = read(WrittenReport{.serial = ""}.text());
    EXPECT_EQ(nameless.result, ReadResult::nameless);
    EXPECT_EQ(nameless.reason, "does not say which unit was tested (no serial number)");
    const Read without = read(with([](auto& document) { document.erase("identity"); }));
    EXPECT_EQ(without.result, ReadResult::nameless);
}

TEST(ReportReader, refuses_what_is_no_report) {
    EXPECT_EQ(read("").reason, "no valid JSON near byte 1");
    for (const char* const other : {"[]", "5", "true", "null", "\"run\"", "[5]"}) {
        EXPECT_EQ(read(other).reason, "no report of wivex-report") << other;
    }
    EXPECT_EQ(read("{}").reason, "no report of wivex-report");
    const std::string text = WrittenReport().text();
    EXPECT_THAT(read(text.substr(0, text.size() / 2)).reason, HasSubstr("no valid JSON near byte"));
    EXPECT_EQ(read(with([](auto& document) { document["version"] = 3; })).reason,
              "version 3 of the format; this program knows 2");
    EXPECT_EQ(read(with([](auto& document) { document["runs"] = nlohmann::json::array(); })).reason,
              "holds no run");
}

TEST(ReportReader, bounds_depth_and_number_of_runs) {
    EXPECT_EQ(read(std::string(100000, '[')).reason, "it is nested too deep");
    const Read many = read(with([](auto& document) {
        const nlohmann::ordered_json run = document["runs"][0];
        for (int i = 0; i < 256; ++i) {
            document["runs"].push_back(run);
        }
    }));
    EXPECT_EQ(many.reason, "runs are too many");
}

TEST(ReportReader, refuses_what_stands_in_the_place_of_a_run_or_its_parts) {
    for (const char* const pointer : {"/runs/1", "/runs/0/causes/0", "/runs/0/limits/0"}) {
        for (const nlohmann::json& value :
             {nlohmann::json(5), nlohmann::json("x"), nlohmann::json(true)}) {
            const Read other = read(with([&](auto& document) {
                document[nlohmann::ordered_json::json_pointer(pointer)] = value;
            }));
            EXPECT_THAT(other.reason, HasSubstr("is no object")) << pointer << value;
        }
    }
}

TEST(ReportReader, passes_over_what_it_does_not_keep) {
    const Read long_one = read(with([](auto& document) {
        for (int i = 0; i < 100000; ++i) {
            document["runs"][0]["iterations"].push_back({{"iteration", "none"}, {"phases", {{}}}});
        }
    }));
    EXPECT_EQ(long_one.reason, "");
    EXPECT_TRUE(long_one.report.runs.front().passed());
}

TEST(ReportReader, refuses_values_that_no_report_has) {
    const auto refused = [](const char* pointer, const nlohmann::json& value, const char* reason) {
        const Read other = read(with([&](auto& document) {
            document[nlohmann::ordered_json::json_pointer(pointer)] = value;
        }));
        EXPECT_EQ(other.result, ReadResult::unreadable) << pointer;
        EXPECT_EQ(other.reason, reason) << pointer;
    };
    refused("/identity/serial", std::string(257, 'x'), "identity/serial is too long");
    refused("/identity/serial", "a\nb", "identity/serial holds control characters");
    refused("/identity/serial", 7, "identity/serial is no text");
    refused("/identity/attempt", 0, "run 1: identity/attempt is no number from 1 on");
    refused("/identity/attempt", 1.5, "identity/attempt is no whole number from 0 on");
    refused("/identity/mac", "02:00:00:00:00", "run 1: identity/mac is no MAC address");
    refused("/runs/0/id", "1", "run 1: id is no id of a run");
    refused("/runs/0/began_at", "2026-02-30T00:00:00Z",
            "run 1: began_at is no date and time with its zone");
    refused("/runs/0/throughput/least", 1e300,
            "runs/*/throughput/least is no number, or beyond all bounds");
    refused("/runs/0/iterations_started", -1,
            "runs/*/iterations_started is no whole number from 0 on");
}

TEST(ReportReader, names_what_a_run_proves_without_times_and_places) {
    const std::string here =
        read(WrittenReport{.station = "S1"}.text()).report.runs[0].text(run_place("content_id"));
    EXPECT_EQ(
        here,
        read(WrittenReport{.station = "S2"}.text()).report.runs[0].text(run_place("content_id")));
    EXPECT_NE(here, read(WrittenReport{.verdict = "failed", .cause = "dhcp-client"}.text())
                        .report.runs[0]
                        .text(run_place("content_id")));
}

} // namespace

} // namespace wivex::line

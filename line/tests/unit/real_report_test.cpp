// SPDX-License-Identifier: Apache-2.0
// Reports that today's wivex-report writes of consoles, not ones that a test has made up.

#include "consoles.hpp"
#include "model/limit_text.hpp"
#include "scratch.hpp"
#include "store/unit_history.hpp"
#include "writers/json_writer.hpp"

#include <gmock/gmock.h>

namespace wivex::line {

namespace {

using report_test::banner;
using report_test::legacy_pass;

// The console with a time of the station in front of every line, a second apart.
std::string stamped(const std::string& console) {
    std::string text;
    std::size_t begin = 0;
    for (int second = 1'700'000'000; begin < console.size(); ++second) {
        const std::size_t end = std::min(console.find('\n', begin), console.size() - 1) + 1;
        text += std::to_string(second) + ".000 " + console.substr(begin, end - begin);
        begin = end;
    }
    return text;
}

class RealReport : public testing::Test {
protected:
    // Reports the console of a unit and adds the report.
    AddTotals add(const std::string& console, const std::string& serial,
                  std::initializer_list<std::string_view> limits = {}) {
        report::ReaderOptions options;
        options.identity = {.serial = serial,
                            .part = "W-1",
                            .station = "S3",
                            .attempt = 2,
                            .operator_name = "Ann",
                            .mac = "02:00:00:00:47:11",
                            .kernel = "6.1",
                            .driver = "ath6kl",
                            .driver_version = "3.2",
                            .firmware = "1.7",
                            .regulatory_domain = "DE",
                            .facts = {{"fixture/side", "7"}}};
        for (const std::string_view limit : limits) {
            EXPECT_EQ(report::add_limit(options.limits, limit), "");
        }
        const std::string text = report::write_json(report_test::read(console, options));
        return add_files(*database_, {scratch_.write(serial + "/run.json", text)});
    }

    bool holds(const std::string& what) {
        return number_from(*database_, "select count(*) from " + what) == 1;
    }

    UnitRun run_of(const std::string& serial) {
        UnitHistory unit;
        const StoreResult result = database_->read([&](soci::session& session) {
            UnitReader reader(session);
            for (const std::int64_t found : reader.find(serial)) {
                reader.read(found, unit);
            }
        });
        EXPECT_TRUE(result.good()) << result.words;
        return unit.runs.empty() ? UnitRun() : unit.runs.front();
    }

    Scratch scratch_;
    std::unique_ptr<Database> database_ = made_database(scratch_.path("line.db"));
};

TEST_F(RealReport, tells_who_was_tested_where_and_when) {
    EXPECT_EQ(add(stamped(banner + legacy_pass + report_test::end), "4711").runs, 1U);
    EXPECT_TRUE(holds("runs where attempt = 2 and part = 'W-1' and station = 'S3' and "
                      "operator = 'Ann' and mac = '02:00:00:00:47:11' and kernel = '6.1' and "
                      "driver = 'ath6kl' and driver_version = '3.2' and firmware = '1.7' and "
                      "regulatory_domain = 'DE'"));
    EXPECT_TRUE(holds("runs where began_utc_s between 1700000000 and 1700000010 and "
                      "duration_s > 10 and length(run_id) = 32"));
    EXPECT_TRUE(holds("run_notes where kind = 'fact' and name = 'fixture/side' and words = '7'"));
    EXPECT_TRUE(holds("unit_macs where mac = '02:00:00:00:47:11'"));
}

TEST_F(RealReport, tells_figures_and_limits_with_their_percentiles) {
    const std::string console =
        stamped(banner + legacy_pass + report_test::legacy_pass_at("50.0") + report_test::end);
    EXPECT_EQ(add(console, "4711", {"throughput>=60", "associate.p95<=300s"}).runs, 1U);
    EXPECT_TRUE(holds("runs where throughput_mean_mbit_s = 72 and throughput_least_mbit_s = 50 "
                      "and associate_mean_s > 0 and iterations = 2 and iterations_passed = 2"));
    EXPECT_TRUE(holds("run_limits where name = 'throughput' and comparison = '>=' and "
                      "limit_value = 60 and unit = 'Mbit/s' and value = 50 and "
                      "verdict = 'outside'"));
    EXPECT_TRUE(holds("run_limits where name = 'associate.p95' and comparison = '<=' and "
                      "unit = 's' and value > 0 and verdict = 'within'"));
    EXPECT_EQ(run_of("4711").key.cause, "limits-outside");
    EXPECT_FALSE(run_of("4711").key.passed);
}

TEST_F(RealReport, passes_only_with_the_evidence_of_its_console) {
    struct Case {
        const char* serial;
        std::string console;
        bool passed;
        const char* verdict;
        const char* cause;
    };
    const std::string pass = banner + legacy_pass;
    const std::vector<Case> cases{
        {"good", pass + report_test::end, true, "passed", ""},
        {"mixed", report_test::mixed, false, "failed", "scan-rejected"},
        {"interrupted", pass + report_test::interrupt, false, "interrupted", "interrupted"},
        {"open", pass, false, "unknown", "open"},
        {"unsaved", pass + report_test::clean_up, false, "unknown", "not-saved"},
    };
    for (const Case& one : cases) {
        const AddTotals totals = add(one.console, one.serial);
        ASSERT_EQ(totals.runs, 1U) << one.serial;
        const UnitRun run = run_of(one.serial);
        EXPECT_EQ(run.key.passed, one.passed) << one.serial;
        EXPECT_EQ(run.verdict, one.verdict) << one.serial;
        EXPECT_EQ(run.key.cause, one.cause) << one.serial;
    }
}

TEST_F(RealReport, of_the_same_console_is_the_same_run) {
    const std::string console = banner + legacy_pass + report_test::end;
    EXPECT_EQ(add(console, "4711").runs, 1U);
    const AddTotals again = add(console, "4711");
    EXPECT_EQ(again.known, 1U);
    EXPECT_EQ(again.conflicts, 0U);
    EXPECT_EQ(add(console, "4712").runs, 1U) << "another unit";
}

TEST_F(RealReport, of_several_runs_tells_each) {
    const std::string console =
        banner + legacy_pass + report_test::end + report_test::mixed + report_test::end;
    EXPECT_EQ(add(console, "4711").runs, 2U);
    EXPECT_TRUE(holds("runs where passed = 1"));
    EXPECT_TRUE(holds("runs where cause = 'scan-rejected'"));
}

} // namespace

} // namespace wivex::line

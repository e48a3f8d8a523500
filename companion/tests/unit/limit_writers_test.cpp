// SPDX-License-Identifier: Apache-2.0
// Limits and distributions in the files of a report, in its summary and in the live view.

#include "consoles.hpp"
#include "junit_schema.hpp"
#include "limit_options.hpp"
#include "model/histogram.hpp"
#include "writers/html_writer.hpp"
#include "writers/json_writer.hpp"
#include "writers/junit_writer.hpp"
#include "writers/live_view.hpp"
#include "writers/summary.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <pugixml.hpp>
#include <string>

namespace {

using namespace report_test;
using namespace wivex::report;
using namespace testing;

const std::string good = banner + legacy_pass + legacy_pass + end;
const std::string slow_once = banner + legacy_pass + legacy_pass_at("11.2") + legacy_pass + end;

nlohmann::json json_of(const std::string& console, std::initializer_list<std::string_view> limits) {
    return nlohmann::json::parse(write_json(read(console, with_limits(limits))));
}

// ---- run.json

TEST(LimitsInJson, stand_in_the_document_and_in_the_run) {
    const auto document = json_of(slow_once, {"throughput>=30", "scan.p95<=4s", "failures<=0"});
    for (const auto& place : {document, document.at("runs").at(0)}) {
        EXPECT_EQ(place.at("limits_verdict"), "outside");
        const auto& limit = place.at("limits").at(0);
        EXPECT_EQ(limit.at("name"), "throughput");
        EXPECT_EQ(limit.at("operator"), ">=");
        EXPECT_EQ(limit.at("limit"), 30);
        EXPECT_EQ(limit.at("unit"), "Mbit/s");
        EXPECT_EQ(limit.at("value"), 11.2);
        EXPECT_EQ(limit.at("verdict"), "outside");
        EXPECT_EQ(limit.at("iterations"), nlohmann::json({1}));
        const auto& unknown = place.at("limits").at(1);
        EXPECT_EQ(unknown.at("name"), "scan.p95");
        EXPECT_EQ(unknown.at("verdict"), "unknown");
        EXPECT_TRUE(unknown.at("value").is_null());
        EXPECT_EQ(unknown.at("why"), "the console has no times");
        EXPECT_EQ(place.at("limits").at(2).at("verdict"), "within");
        EXPECT_TRUE(place.at("limits").at(2).at("unit").is_null());
    }
    EXPECT_EQ(document.at("verdict"), "passed");
}

TEST(LimitsInJson, are_none_without_limits) {
    const auto document = json_of(good, {});
    EXPECT_TRUE(document.at("limits").empty());
    EXPECT_TRUE(document.at("limits_verdict").is_null());
}

TEST(DistributionInJson, has_percentiles_and_a_histogram) {
    const auto run = json_of(slow_once, {}).at("runs").at(0);
    const auto& figures = run.at("throughput_distribution");
    EXPECT_EQ(figures.at("percentile_99"), 94);
    EXPECT_EQ(figures.at("exact"), true);
    std::size_t sum = 0;
    for (const auto& bin : figures.at("histogram")) {
        EXPECT_LT(bin.at("from"), bin.at("to"));
        sum += bin.at("count").get<std::size_t>();
    }
    EXPECT_EQ(sum, 3U);
    EXPECT_TRUE(run.at("signal").is_null());
}

TEST(WorstIterations, stand_in_json_with_their_console_lines) {
    const auto run = json_of(slow_once, {}).at("runs").at(0);
    const auto& worst = run.at("worst_iterations").at(0);
    EXPECT_EQ(worst.at("figure"), "throughput");
    EXPECT_EQ(worst.at("iteration"), 1);
    EXPECT_EQ(worst.at("value"), 11.2);
    // The line of the chip type is the first one of an iteration.
    const std::size_t before = static_cast<std::size_t>(std::ranges::count(banner, '\n') +
                                                        std::ranges::count(legacy_pass, '\n'));
    EXPECT_EQ(worst.at("first_line"), before + 2);
}

// ---- The histogram

TEST(Histogram, has_round_bins_that_hold_every_value) {
    Series series;
    for (std::uint32_t i = 0; i < 1000; ++i) {
        series.add(i, 0.013F * static_cast<float>(i));
    }
    const auto bins = histogram_of(series);
    EXPECT_LE(bins.size(), most_bins);
    EXPECT_GE(bins.size(), most_bins / 2);
    std::uint32_t sum = 0;
    for (std::size_t i = 0; i < bins.size(); ++i) {
        EXPECT_LT(bins[i].from, bins[i].to);
        EXPECT_TRUE(i == 0 || bins[i].from == bins[i - 1].to);
        sum += bins[i].count;
    }
    EXPECT_EQ(sum, 1000U);
    EXPECT_GT(bins.front().count, 0U);
    EXPECT_GT(bins.back().count, 0U);
}

TEST(Histogram, has_one_bin_for_one_value_and_none_for_none) {
    Series series;
    EXPECT_TRUE(histogram_of(series).empty());
    series.add(0, -61);
    series.add(1, -61);
    ASSERT_EQ(histogram_of(series).size(), 1U);
    EXPECT_EQ(histogram_of(series).front().count, 2U);
    EXPECT_LE(histogram_of(series).front().from, -61);
}

// ---- junit.xml

pugi::xml_document junit_of(const std::string& console,
                            std::initializer_list<std::string_view> limits) {
    pugi::xml_document document;
    const std::string text = write_junit(read(console, with_limits(limits)));
    EXPECT_TRUE(document.load_buffer(text.data(), text.size()));
    EXPECT_EQ(junit_problem(document), "");
    return document;
}

TEST(LimitsInJunit, are_a_test_case_each) {
    const auto document = junit_of(slow_once, {"throughput>=30", "scan<=4s", "failures<=0"});
    const pugi::xml_node suite = document.child("testsuites").child("testsuite");
    EXPECT_EQ(suite.attribute("failures").as_int(), 1);
    EXPECT_EQ(suite.attribute("errors").as_int(), 1);
    pugi::xml_node test = suite.find_child_by_attribute("name", "limit throughput >= 30 Mbit/s");
    EXPECT_STREQ(test.attribute("classname").value(), "wivex.legacy-wlan.limit");
    EXPECT_STREQ(test.child("failure").attribute("message").value(),
                 "throughput >= 30 Mbit/s: outside, 11.2 Mbit/s; 1 iteration: 1");
    test = suite.find_child_by_attribute("name", "limit scan <= 4 s");
    EXPECT_STREQ(test.child("error").attribute("type").value(), "unknown");
    test = suite.find_child_by_attribute("name", "limit failures <= 0");
    EXPECT_TRUE(test);
    EXPECT_TRUE(test.first_child().empty());
}

TEST(LimitsInJunit, are_told_of_runs_that_were_left_out) {
    std::string console = banner + legacy_pass_at("11.2") + end;
    for (int i = 0; i < 8; ++i) {
        console += good;
    }
    const auto document = junit_of(console, {"throughput>=30"});
    const pugi::xml_node suite = document.child("testsuites").last_child();
    EXPECT_EQ(suite.attribute("failures").as_int(), 1);
    EXPECT_EQ(suite.attribute("errors").as_int(), 0) << "the run itself has passed";
}

// ---- report.html

std::string page_of(const std::string& console, std::initializer_list<std::string_view> limits) {
    return write_html(read(console, with_limits(limits)));
}

TEST(LimitsOnThePage, stand_beside_the_verdict_of_the_tool) {
    const std::string page = page_of(slow_once, {"throughput>=30"});
    EXPECT_THAT(page, HasSubstr("<h2 class=\"verdict passed\">All 3 iterations passed</h2>"));
    EXPECT_THAT(page,
                HasSubstr("<p class=\"limits bad\">\u00d7 Outside limits: 1 of 1 broken</p>"));
    EXPECT_THAT(page, HasSubstr("<title>wivex: All 3 iterations passed; Outside limits"));
    EXPECT_THAT(page, HasSubstr("<path class=\"limit\""));
    EXPECT_THAT(page, HasSubstr("limits: throughput &gt;= 30 Mbit/s"));
}

TEST(LimitsOnThePage, name_the_iterations_with_a_link_to_their_console_lines) {
    const std::string page = page_of(slow_once, {"throughput>=30"});
    EXPECT_THAT(page, HasSubstr("<td class=\"verdicts\"><a href=\"#w1\">1</a></td>"));
    EXPECT_THAT(page, HasSubstr("<details id=\"w1\">"));
    EXPECT_THAT(page, HasSubstr("11.2 Mbits/sec"));
}

TEST(LimitsOnThePage, are_green_only_when_the_tool_has_passed) {
    const std::string within = "<p class=\"limits ok\">Within limits: all 1 kept</p>";
    EXPECT_THAT(page_of(good, {"throughput>=30"}), HasSubstr(within));
    const std::string page = page_of(mixed, {"throughput>=30"});
    EXPECT_THAT(page, HasSubstr("<p class=\"limits soft\">Within limits: all 1 kept</p>"));
    EXPECT_THAT(page, Not(HasSubstr("class=\"ok\">within")));
    EXPECT_THAT(page_of(good, {"scan<=4s"}),
                HasSubstr("<p class=\"limits amber\">? Limits not known"));
}

TEST(LimitsOnThePage, are_said_of_all_runs_together) {
    const std::string page = page_of(slow_once + good, {"throughput>=30"});
    EXPECT_THAT(page, HasSubstr("<title>wivex: 2 runs: 2 passed; Outside limits: 1 of 1 broken"));
}

// ---- The summary

TEST(LimitsInTheSummary, are_told_with_what_breaks_them) {
    EXPECT_THAT(summary(read(slow_once, with_limits({"throughput>=30", "failures<=0"}))),
                EndsWith("  Outside limits: 1 of 2 broken\n"
                         "    throughput >= 30 Mbit/s: outside, 11.2 Mbit/s; 1 iteration: 1\n"));
    EXPECT_THAT(summary(read(good, with_limits({"failures<=0"}))),
                EndsWith("  Within limits: all 1 kept\n"));
    EXPECT_THAT(summary(read(good)), Not(HasSubstr("imits")));
}

// ---- The live view

TEST(LimitsInTheLiveView, turn_the_figure_that_breaks_them) {
    RunReader reader(with_limits({"throughput>=30"}));
    LiveView view({500, true, 80});
    reader.feed(banner + legacy_pass + checks_pass + scan_and_associate + take_address);
    reader.feed("[  3]  0.0- 1.0 sec  11.0 MBytes  92.3 Mbits/sec\n");
    const std::string before = view.update(reader.progress(), 1);
    EXPECT_THAT(before, HasSubstr("throughput 92.3 Mbit/s   mean 94.0 Mbit/s\n"));
    EXPECT_THAT(before, Not(HasSubstr("limits")));
    reader.feed("[  3]  1.0- 2.0 sec  1.0 MBytes  11.2 Mbits/sec\n");
    EXPECT_THAT(view.update(reader.progress(), 2),
                HasSubstr("throughput \x1b[1;31m11.2 Mbit/s !\x1b[0m   mean 94.0 Mbit/s\n"));
}

TEST(LimitsInTheLiveView, stay_on_the_screen_once_they_are_broken) {
    RunReader reader(with_limits({"throughput>=30"}));
    LiveView view({500, true, 80});
    reader.feed(banner + legacy_pass + legacy_pass_at("11.2") + checks_pass);
    const std::string text = view.update(reader.progress(), 2);
    EXPECT_THAT(text, HasSubstr("iteration 1 passed, 11.2 Mbit/s, outside throughput >= 30"));
    EXPECT_THAT(text, HasSubstr("\x1b[1;31moutside limits: throughput >= 30 Mbit/s (11.2 Mbit/s, 1 "
                                "iteration) !\x1b[0m\n"));
}

TEST(LimitsInTheLiveView, are_plain_words_where_there_is_no_terminal) {
    RunReader reader(with_limits({"throughput>=30"}));
    LiveView view({0, false, 80});
    reader.feed(slow_once);
    reader.finish();
    const std::string text = view.finish(reader.progress());
    EXPECT_THAT(text, HasSubstr("iteration 0 passed, 94.0 Mbit/s\n"));
    EXPECT_THAT(text,
                HasSubstr("iteration 1 passed, 11.2 Mbit/s, outside throughput >= 30 Mbit/s\n"));
    EXPECT_THAT(text, Not(HasSubstr("\x1b")));
}

} // namespace

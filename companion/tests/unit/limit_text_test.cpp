// SPDX-License-Identifier: Apache-2.0
// Limits as people write them.

#include "model/limit_text.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace wivex::report;
using namespace testing;

// What the limit is read as, or what is wrong with it.
std::string read_as(std::string_view text) {
    std::vector<Limit> limits;
    const std::string problem = add_limit(limits, text);
    return problem.empty() ? text_of(limits.at(0)) : problem;
}

std::string both(std::string_view one, std::string_view other) {
    std::vector<Limit> limits;
    EXPECT_EQ(add_limit(limits, one), "");
    return add_limit(limits, other);
}

TEST(LimitText, has_a_name_a_bound_a_number_and_a_unit) {
    EXPECT_EQ(read_as("throughput>=30"), "throughput >= 30 Mbit/s");
    EXPECT_EQ(read_as("dhcp<=5s"), "dhcp <= 5 s");
    EXPECT_EQ(read_as("associate.p95<=4s"), "associate.p95 <= 4 s");
    EXPECT_EQ(read_as("signal>=-60"), "signal >= -60 dBm");
    EXPECT_EQ(read_as("failures<=0"), "failures <= 0");
    EXPECT_EQ(read_as("  iteration.median <=\t20.5 s "), "iteration.median <= 20.5 s");
    EXPECT_EQ(read_as("throughput.most<=1000Mbit/s"), "throughput.most <= 1000 Mbit/s");
}

TEST(LimitText, takes_milliseconds) {
    EXPECT_EQ(read_as("scan<=9ms"), "scan <= 0.009 s");
    EXPECT_EQ(read_as("scan<=250 ms"), "scan <= 0.25 s");
}

TEST(LimitText, refuses_what_is_no_limit) {
    EXPECT_EQ(read_as("throughput"), "limit \"throughput\": no >= or <= in it");
    EXPECT_EQ(read_as("throughput=30"), "limit \"throughput=30\": no >= or <= in it");
    EXPECT_EQ(read_as("throughput>30"), "limit \"throughput>30\": no >= or <= in it");
    EXPECT_EQ(read_as(""), "limit \"\": no >= or <= in it");
    EXPECT_EQ(read_as("throughput>="), "limit \"throughput>=\": no number in \"\"");
    EXPECT_THAT(read_as("throughput.p50>=3"), HasSubstr("unknown statistic \"p50\""));
    EXPECT_THAT(read_as("Throughput>=3"), HasSubstr("unknown name \"Throughput\"; known are "));
    EXPECT_THAT(read_as("none>=3"), HasSubstr("unknown name"));
    EXPECT_THAT(read_as(".p95>=3"), HasSubstr("unknown name \"\""));
}

TEST(LimitText, refuses_numbers_that_are_none) {
    for (const char* const number : {"nan", "inf", "-inf", "x", "0x10", "1e400", "--1"}) {
        EXPECT_THAT(read_as("signal>=" + std::string(number)), StartsWith("limit \"signal>="))
            << number;
    }
    EXPECT_THAT(read_as("signal>=-99999999999"), HasSubstr("the number is too large"));
    EXPECT_THAT(read_as("dhcp<=-1"), HasSubstr("dhcp is never below 0"));
    EXPECT_THAT(read_as("failures<=0.5"), HasSubstr("failures are whole numbers"));
    EXPECT_THAT(read_as("dhcp<=0.0001"), HasSubstr("three places behind the point"));
    EXPECT_THAT(read_as("dhcp<=1,5s"), HasSubstr("wrong unit \",5s\""));
}

TEST(LimitText, refuses_a_unit_of_something_else) {
    EXPECT_THAT(read_as("dhcp<=5dBm"), HasSubstr("wrong unit \"dBm\": dhcp is told in s"));
    EXPECT_THAT(read_as("signal>=-60 %"), HasSubstr("wrong unit \"%\": signal is told in dBm"));
    EXPECT_THAT(read_as("throughput>=30s"), HasSubstr("throughput is told in Mbit/s"));
    EXPECT_THAT(read_as("failures<=0s"), HasSubstr("failures has none"));
}

TEST(LimitText, refuses_a_statistic_of_what_is_counted) {
    EXPECT_THAT(read_as("failures.p95<=0"), HasSubstr("failures are counted"));
}

TEST(LimitText, shows_what_is_not_printable_as_text) {
    EXPECT_EQ(read_as(std::string("\x1b[2J\0x", 6)), "limit \"\\x1b[2J\\x00x\": no >= or <= in it");
    EXPECT_LT(read_as(std::string(1000000, 'x') + ">=1").size(), 400U);
}

TEST(Limits, may_not_contradict_each_other) {
    EXPECT_EQ(both("throughput>=30", "throughput>=40"),
              "limit \"throughput>=40\" contradicts \"throughput >= 30 Mbit/s\"");
    EXPECT_THAT(both("throughput>=30", "throughput<=20"), HasSubstr("contradicts"));
    EXPECT_EQ(both("throughput>=30", "throughput<=40"), "");
    EXPECT_EQ(both("throughput>=30", "throughput.p95>=40"), "");
    EXPECT_EQ(both("scan<=1s", "dhcp<=2s"), "");
}

TEST(Limits, of_the_same_words_count_once) {
    std::vector<Limit> limits;
    EXPECT_EQ(add_limit(limits, "scan<=1s"), "");
    EXPECT_EQ(add_limit(limits, "scan <= 1000 ms"), "");
    EXPECT_THAT(limits, SizeIs(1));
}

TEST(Limits, are_not_without_number) {
    std::vector<Limit> limits;
    std::string problem;
    for (const char* const statistic :
         {"", ".median", ".mean", ".p95", ".p99", ".least", ".most"}) {
        for (const Phase phase : all_phases()) {
            const std::string name = std::string(name_of(phase)) + statistic;
            problem = problem.empty() ? add_limit(limits, name + "<=1s") : problem;
        }
    }
    EXPECT_EQ(problem, "more than 64 limits");
}

TEST(LimitsFile, has_one_limit_a_line_and_comments) {
    std::vector<Limit> limits;
    EXPECT_EQ(
        add_limits_of_file(limits, "# Line 3\r\n\n throughput >= 30 # Mbit/s\r\ndhcp<=5s", "f"),
        "");
    ASSERT_THAT(limits, SizeIs(2));
    EXPECT_EQ(text_of(limits.at(1)), "dhcp <= 5 s");
}

TEST(LimitsFile, tells_the_line_that_is_wrong) {
    std::vector<Limit> limits;
    EXPECT_EQ(
        add_limits_of_file(limits, "scan<=1s\n\nfoo<=1\n", "line.limits"),
        "line.limits, line 3: limit \"foo<=1\": unknown name \"foo\"; known are throughput, "
        "iteration, signal, failures, warnings, module, driver, mac, loopback, session, scan, "
        "associate, find, negotiate, group, dhcp, traffic, serve, disconnect, removal");
}

TEST(LimitsFile, is_not_empty) {
    std::vector<Limit> limits;
    EXPECT_EQ(add_limits_of_file(limits, "", "f"), "f holds no limit");
    EXPECT_EQ(add_limits_of_file(limits, "# nothing\n\n", "f"), "f holds no limit");
}

} // namespace

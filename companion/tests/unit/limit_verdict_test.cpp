// SPDX-License-Identifier: Apache-2.0
// Whether the figures of a run are within their limits, and when nobody can know.

#include "consoles.hpp"
#include "limit_options.hpp"
#include "model/limit_verdict.hpp"
#include "model/verdict.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace report_test;
using namespace wivex::report;
using namespace testing;

LimitResult judged(const std::string& console, std::string_view limit) {
    return judge_limits(read(console, with_limits({limit}))).at(0);
}

// Limits that a user could not set at once.
ReaderOptions held_against_all(std::initializer_list<std::string_view> limits) {
    ReaderOptions options;
    for (const std::string_view limit : limits) {
        options.limits.push_back(with_limits({limit}).limits.at(0));
    }
    return options;
}

std::vector<LimitVerdict> verdicts_on(const Log& log) {
    std::vector<LimitVerdict> verdicts;
    for (const LimitResult& result : judge_limits(log)) {
        verdicts.push_back(result.verdict);
    }
    return verdicts;
}

std::vector<LimitVerdict> judged_at_once(const std::string& console,
                                         std::initializer_list<std::string_view> limits) {
    return verdicts_on(read(console, held_against_all(limits)));
}

// The stamps of a logging tool: every line comes `step` seconds after the one before.
std::string stamped(const std::string& console, double step) {
    return stamped_lines(
        console, [step](int line) { return std::to_string(1000000000 + step * (line + 1)); });
}

const std::string slow_between =
    banner + legacy_pass + legacy_pass_at("20.0") + legacy_pass_at("15.0") + end;

TEST(LimitVerdict, is_within_when_every_iteration_keeps_it) {
    const LimitResult result = judged(banner + legacy_pass + legacy_pass + end, "throughput>=94");
    EXPECT_EQ(result.verdict, LimitVerdict::within);
    EXPECT_DOUBLE_EQ(result.value.value_or(0), 94);
    EXPECT_THAT(result.iterations, IsEmpty());
}

TEST(LimitVerdict, is_outside_and_names_the_iterations_that_break_it) {
    const LimitResult result = judged(slow_between, "throughput>=30");
    EXPECT_EQ(result.verdict, LimitVerdict::outside);
    EXPECT_DOUBLE_EQ(result.value.value_or(0), 15);
    EXPECT_THAT(result.iterations, ElementsAre(1, 2));
    EXPECT_EQ(result.broken, 2U);
}

TEST(LimitVerdict, is_asked_of_a_statistic_as_well) {
    EXPECT_EQ(judged(slow_between, "throughput.median>=20").verdict, LimitVerdict::within);
    EXPECT_EQ(judged(slow_between, "throughput.median>=20.1").verdict, LimitVerdict::outside);
    EXPECT_EQ(judged(slow_between, "throughput.mean>=43").verdict, LimitVerdict::within);
    EXPECT_EQ(judged(slow_between, "throughput.mean>=43.001").verdict, LimitVerdict::outside);
    EXPECT_EQ(judged(slow_between, "throughput.most<=93").verdict, LimitVerdict::outside);
    EXPECT_EQ(judged(slow_between, "throughput.least>=15").verdict, LimitVerdict::within);
    EXPECT_EQ(judged(slow_between, "throughput.p95<=94").verdict, LimitVerdict::within);
    EXPECT_EQ(judged(slow_between, "throughput.p99<=90").verdict, LimitVerdict::outside);
}

TEST(LimitVerdict, is_not_known_when_nothing_was_measured) {
    const LimitResult result =
        judged(banner + checks_pass + "[WIFI]SCAN SUCCESS\n" + end, "throughput>=1");
    EXPECT_EQ(result.verdict, LimitVerdict::unknown);
    EXPECT_FALSE(result.value);
    EXPECT_EQ(result.why, "nothing was measured");
}

TEST(LimitVerdict, is_not_known_without_times) {
    const LimitResult result = judged(banner + legacy_pass + end, "dhcp<=5s");
    EXPECT_EQ(result.verdict, LimitVerdict::unknown);
    EXPECT_EQ(result.why, "the console has no times");
}

TEST(LimitVerdict, is_not_known_when_a_passed_iteration_has_no_value) {
    const std::string without = checks_pass + scan_and_associate + take_address +
                                "Run Iperf Successful...\n" + disconnect + session_closes;
    const LimitResult result = judged(banner + legacy_pass + without + end, "throughput>=30");
    EXPECT_EQ(result.verdict, LimitVerdict::unknown);
    EXPECT_EQ(result.why, "1 iteration without a value");
}

TEST(LimitVerdict, leaves_an_iteration_that_failed_to_the_verdict_of_the_tool) {
    EXPECT_EQ(judged(mixed, "throughput>=90").verdict, LimitVerdict::within);
    EXPECT_EQ(judge(read(mixed, with_limits({"throughput>=90"}))), RunVerdict::failed);
}

TEST(LimitVerdict, is_never_within_on_a_console_that_does_not_show_the_whole_run) {
    const std::string whole = banner + legacy_pass + legacy_pass + end;
    EXPECT_EQ(judged(whole, "failures<=0").verdict, LimitVerdict::within);
    for (std::size_t length = 0; length + 1 < whole.size(); ++length) {
        const std::string cut = whole.substr(0, length);
        EXPECT_THAT(judged_at_once(cut, {"failures<=0", "warnings<=0", "throughput>=1"}),
                    Each(LimitVerdict::unknown))
            << cut;
    }
}

TEST(LimitVerdict, is_not_known_with_the_reason_that_the_run_is_not_whole) {
    EXPECT_EQ(judged(banner + legacy_pass, "throughput>=1").why,
              "the console does not show the whole run");
}

TEST(LimitVerdict, is_outside_however_little_of_the_run_is_there) {
    EXPECT_EQ(judged(banner + legacy_pass_at("15.0") + checks_pass, "throughput>=30").verdict,
              LimitVerdict::outside);
}

TEST(LimitVerdict, counts_failures_and_warnings) {
    EXPECT_EQ(judged(mixed, "failures<=1").verdict, LimitVerdict::within);
    const LimitResult result = judged(mixed, "failures<=0");
    EXPECT_EQ(result.verdict, LimitVerdict::outside);
    EXPECT_DOUBLE_EQ(result.value.value_or(0), 1);
    EXPECT_THAT(result.iterations, ElementsAre(1));
    EXPECT_EQ(judged(mixed, "warnings<=0").verdict, LimitVerdict::within);
}

TEST(LimitVerdict, judges_what_is_shown) {
    // 20 lines of a quarter of a second each, whatever the float of their sum is.
    const std::string console = stamped(banner + legacy_pass + legacy_pass + end, 0.1);
    const auto run = read_run(console);
    const double dhcp = run.phase_series.at(index_of(Phase::dhcp)).most().value;
    EXPECT_NEAR(dhcp, 0.4, 0.001);
    EXPECT_EQ(judged(console, "dhcp<=0.4s").verdict, LimitVerdict::within);
    EXPECT_EQ(judged(console, "dhcp<=0.399s").verdict, LimitVerdict::outside);
    EXPECT_EQ(judged(console, "iteration<=10s").verdict, LimitVerdict::within);
    EXPECT_EQ(judged(console, "iteration<=1s").verdict, LimitVerdict::outside);
}

TEST(LimitVerdict, forgets_times_that_were_those_of_a_saved_console) {
    ReaderOptions options = with_limits({"scan<=5s"});
    options.arrival_times = true;
    RunReader reader(options);
    reader.feed(banner + legacy_pass, 0);
    reader.feed(legacy_pass, 20);
    reader.feed(legacy_pass + end, 20.1);
    reader.finish(20.1);
    const LimitResult result = judge_limits(reader.log()).at(0);
    EXPECT_EQ(result.verdict, LimitVerdict::unknown);
    EXPECT_FALSE(result.value);
}

TEST(LimitVerdict, is_exact_where_only_a_part_of_the_values_is_kept) {
    // 6 of 100 iterations are fast, and none of them is among those that are kept.
    std::string console = banner;
    for (int i = 0; i < 3 * 4096; ++i) {
        console += i % 16 == 1 ? legacy_pass_at("200.0") : legacy_pass;
    }
    // Without a value, they count for nothing.
    for (int i = 0; i < 4000; ++i) {
        console += refused;
    }
    const Log log =
        read(console + end, held_against_all({"throughput.p95<=100", "throughput.p95<=200",
                                              "throughput.p99>=200", "throughput.p95>=94",
                                              "throughput.p95>=94.1", "throughput.median<=100",
                                              "throughput.most<=100", "throughput<=100"}));
    const auto& run = log.runs.back();
    EXPECT_FALSE(run.throughput_series.keeps_all());
    EXPECT_DOUBLE_EQ(run.throughput_series.quantile(0.95), 94) << "the kept ones miss them";
    EXPECT_THAT(verdicts_on(log),
                ElementsAre(LimitVerdict::outside, LimitVerdict::within, LimitVerdict::within,
                            LimitVerdict::within, LimitVerdict::within, LimitVerdict::within,
                            LimitVerdict::outside, LimitVerdict::outside));
    const LimitResult each = judge_limits(log).back();
    EXPECT_EQ(each.broken, 768U);
    EXPECT_THAT(each.iterations, SizeIs(100));
}

TEST(LimitVerdict, is_exact_to_one_value_where_only_a_part_of_them_is_kept) {
    // 11674 of 12288 are 95 %, and as many are slow.
    std::string console = banner;
    for (int i = 0; i < 3 * 4096; ++i) {
        console += i % 16 == 1 && i < 614 * 16 ? legacy_pass_at("200.0") : legacy_pass;
    }
    EXPECT_THAT(judged_at_once(console + end, {"throughput.p95<=94", "throughput.p95>=94.1"}),
                ElementsAre(LimitVerdict::within, LimitVerdict::outside));
}

TEST(LimitVerdict, is_that_of_the_worst_run_also_of_one_that_was_left_out) {
    std::string console = banner + legacy_pass_at("15.0") + end;
    EXPECT_EQ(judged(console, "throughput>=30").verdict, LimitVerdict::outside);
    for (int i = 0; i < 9; ++i) {
        console += banner + legacy_pass + end;
    }
    const Log log = read(console, with_limits({"throughput>=30"}));
    EXPECT_EQ(log.dropped_runs, 2U);
    EXPECT_EQ(worst_of(judge_limits(log.runs.back())), LimitVerdict::within);
    EXPECT_EQ(worst_of(judge_limits(log)), LimitVerdict::outside);
    EXPECT_FALSE(are_kept(judge_limits(log)));
}

TEST(LimitVerdict, is_that_of_the_worst_run_for_every_limit) {
    const std::string console = banner + legacy_pass + end + banner + legacy_pass_at("15.0") + end +
                                banner + legacy_pass + end;
    const std::vector<LimitResult> results = judge_limits(
        read(console, with_limits({"throughput.least>=30", "failures<=0", "throughput>=30"})));
    EXPECT_THAT(results, ElementsAre(Field(&LimitResult::verdict, LimitVerdict::outside),
                                     Field(&LimitResult::verdict, LimitVerdict::within),
                                     Field(&LimitResult::verdict, LimitVerdict::outside)));
    EXPECT_DOUBLE_EQ(results[2].value.value_or(0), 15);
}

TEST(LimitVerdict, is_that_of_the_first_of_several_runs_that_break_it) {
    const std::string console =
        banner + legacy_pass_at("20.0") + end + banner + legacy_pass_at("15.0") + end;
    EXPECT_DOUBLE_EQ(judged(console, "throughput>=30").value.value_or(0), 20);
}

TEST(LimitVerdict, is_asked_of_a_traffic_of_nothing_as_well) {
    const LimitResult result = judged(banner + legacy_pass_at("0.00") + end, "throughput>=1");
    EXPECT_EQ(result.verdict, LimitVerdict::outside);
    EXPECT_THAT(result.iterations, ElementsAre(0));
}

TEST(LimitVerdict, is_not_known_without_any_run) {
    EXPECT_EQ(judged("nothing of the tool\n", "failures<=0").why, "there is no run");
    EXPECT_FALSE(worst_of(judge_limits(read(mixed))));
    EXPECT_TRUE(are_kept(judge_limits(read(mixed))));
}

TEST(LimitVerdict, never_changes_the_verdict_of_the_tool) {
    for (const std::string& console :
         {mixed, slow_between, banner + legacy_pass + end, banner + checks_pass, std::string()}) {
        for (const char* const limit : {"throughput>=1000", "failures<=0", "dhcp<=1s"}) {
            EXPECT_EQ(judge(read(console, with_limits({limit}))), judge(read(console)));
        }
    }
}

// ---- The signal of the access point under test

std::string listing(const std::string& lines, const std::string& behind) {
    const std::string scan = "bssid / frequency / signal level / flags / ssid\n" + lines;
    std::string console = legacy_pass;
    const std::size_t place = console.find("line-apis found...");
    console.insert(place, scan);
    const std::size_t selected = console.find("Call to SELECT_NETWORK");
    console.insert(selected, behind);
    return console;
}

const std::string two_of_one_name = "02:00:00:00:01:00\t2412\t-38\t[ESS]\tline-ap\n"
                                    "02:00:00:00:02:00\t2462\t-71\t[ESS]\tline-ap\n"
                                    "02:00:00:00:03:00\t2462\t-20\t[ESS]\toffice\n";
const std::string connected =
    "<3>CTRL-EVENT-CONNECTED - Connection to 02:00:00:00:02:00 completed [id=0 id_str=]\n";

TEST(Signal, is_that_of_the_access_point_of_the_connection) {
    const auto run = read_run(banner + listing(two_of_one_name, connected) + end);
    EXPECT_FLOAT_EQ(run.iterations.at(0).signal, -71);
    EXPECT_EQ(run.signal.count, 1U);
}

TEST(Signal, is_that_of_the_only_one_of_the_name_without_such_an_event) {
    const std::string one = "02:00:00:00:01:00\t2412\t-38\t[ESS]\tline-ap\n"
                            "02:00:00:00:03:00\t2462\t-20\t[ESS]\toffice\n";
    EXPECT_FLOAT_EQ(read_run(banner + listing(one, "") + end).signal.least, -38);
}

TEST(Signal, is_not_known_when_several_have_the_name) {
    EXPECT_EQ(read_run(banner + listing(two_of_one_name, "") + end).signal.count, 0U);
    EXPECT_EQ(read_run(banner + legacy_pass + end).signal.count, 0U);
}

TEST(Signal, has_limits_as_any_figure) {
    const std::string console = banner + listing(two_of_one_name, connected) + end;
    EXPECT_EQ(judged(console, "signal>=-75").verdict, LimitVerdict::within);
    EXPECT_EQ(judged(console, "signal>=-60").verdict, LimitVerdict::outside);
    EXPECT_EQ(judged(banner + legacy_pass + end, "signal>=-60").verdict, LimitVerdict::unknown);
}

} // namespace

// SPDX-License-Identifier: Apache-2.0
// When a run was: zones, daylight saving time, and clocks that jump.

#include "common/local_zone.hpp"
#include "consoles.hpp"
#include "writers/json_writer.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <ctime>
#include <nlohmann/json.hpp>
#include <pugixml.hpp>
#include <utility>
#include <vector>

namespace {

using namespace wivex::report;
using namespace report_test;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

using Lines = std::vector<std::pair<std::string, std::string>>;

// The zone of this process, for one test.
class Zone {
public:
    explicit Zone(const char* name) {
        setenv("TZ", name, 1);
        tzset();
    }
    ~Zone() {
        unsetenv("TZ");
        tzset();
    }
    Zone(const Zone&) = delete;
    Zone& operator=(const Zone&) = delete;
};

// As written in the rules of the European Union, so that no table of zones is needed.
constexpr const char* central_europe = "CET-1CEST,M3.5.0,M10.5.0/3";

Log read_stamped(const Lines& lines) {
    std::string console;
    for (const auto& [stamp, line] : lines) {
        console += stamp + " " + line + "\n";
    }
    return read(console);
}

// A run of one iteration; the module is ready at `middle`, the driver at `last`.
Log read_run_at(const std::string& first, const std::string& middle, const std::string& last) {
    return read_stamped({{first, "[WIFI]WIVEX2"},
                         {first, "[WIFI]Chip type is = 2"},
                         {middle, "[WIFI]MODULE CONNECTED"},
                         {last, "[WIFI]WIFI DRIVER READY"},
                         {last, "[WIFI]ResultFile: x Updated"}});
}

std::string began(const Log& log) {
    return rfc3339(log.runs.at(0).when.began.value());
}

std::string ended(const Log& log) {
    return rfc3339(log.runs.at(0).when.ended.value());
}

float seconds_of(const Log& log, Phase phase) {
    return log.runs.at(0).iterations.at(0).phase(phase).seconds;
}

// ---- Zones

TEST(Instant, is_written_with_its_offset) {
    EXPECT_EQ(rfc3339({0, 0}), "1970-01-01T00:00:00+00:00");
    EXPECT_EQ(rfc3339({1774742400.75, 3600}), "2026-03-29T01:00:00+01:00");
    EXPECT_EQ(rfc3339({0, -16200}), "1969-12-31T19:30:00-04:30");
    EXPECT_EQ(rfc3339({-62167219200.0, 0}), "0000-01-01T00:00:00+00:00");
    EXPECT_EQ(rfc3339({-62167219201.0, 0}), "");
    EXPECT_EQ(rfc3339({1e15, 0}), "");
    EXPECT_EQ(rfc3339({std::nan(""), 0}), "");
    EXPECT_EQ(rfc3339({0, 360000}), "");
}

TEST(RunTimes, keep_the_zone_of_the_stamps) {
    const Zone here("UTC");
    const Log log = read_run_at("2026-06-12T10:11:12.5+02:00", "2026-06-12T10:11:14.5+02:00",
                                "2026-06-12T10:11:15.5+0200");
    EXPECT_EQ(began(log), "2026-06-12T10:11:12+02:00");
    EXPECT_EQ(ended(log), "2026-06-12T10:11:15+02:00");
    EXPECT_FALSE(log.runs.at(0).when.zone_assumed);
    EXPECT_EQ(log.runs.at(0).began, "2026-06-12 10:11:12");
    EXPECT_EQ(
        began(read_run_at("2026-06-12T10:11:12Z", "2026-06-12T10:11:12Z", "2026-06-12T10:11:12Z")),
        "2026-06-12T10:11:12+00:00");
    EXPECT_EQ(began(read_run_at("[2026-06-12 10:11:12-0030]", "[2026-06-12 10:11:12-0030]",
                                "[2026-06-12 10:11:12-0030]")),
              "2026-06-12T10:11:12-00:30");
}

TEST(RunTimes, put_seconds_since_1970_into_the_zone_of_this_machine) {
    const Zone here(central_europe);
    EXPECT_EQ(began(read_run_at("1781252472.5", "1781252473", "1781252474")),
              "2026-06-12T10:21:12+02:00");
}

TEST(RunTimes, take_stamps_without_zone_for_local_and_say_so) {
    const Zone here(central_europe);
    const Log log =
        read_run_at("2026-01-12T10:11:12", "2026-01-12T10:11:13", "2026-01-12T10:11:14");
    EXPECT_EQ(began(log), "2026-01-12T10:11:12+01:00");
    EXPECT_TRUE(log.runs.at(0).when.zone_assumed);
    EXPECT_EQ(nlohmann::json::parse(write_json(log)).at("runs").at(0).at("zone_assumed"), true);
}

TEST(RunTimes, are_unknown_when_the_stamps_tell_no_date) {
    for (const std::string stamp : {"10:11:12", "Jun 12 10:11:12"}) {
        const Log log = read_run_at(stamp, stamp, stamp);
        EXPECT_FALSE(log.runs.at(0).when.began) << stamp;
        const auto run = nlohmann::json::parse(write_json(log)).at("runs").at(0);
        EXPECT_TRUE(run.at("began_at").is_null());
        EXPECT_TRUE(run.at("ended_at").is_null());
    }
    EXPECT_FALSE(read(mixed).runs.at(0).when.began);
}

TEST(RunTimes, take_the_arrival_by_the_clock_of_this_machine) {
    const Zone here(central_europe);
    ReaderOptions options;
    options.arrival_times = true;
    options.wall_clock = [] { return 1781252472.0; };
    RunReader reader(options);
    reader.feed(banner + checks_pass, 100);
    reader.feed(end, 101);
    reader.finish(102);
    EXPECT_EQ(began(reader.log()), "2026-06-12T10:21:12+02:00");
    EXPECT_EQ(ended(reader.log()), "2026-06-12T10:21:12+02:00");
    EXPECT_THAT(identity_warnings(reader.log()), IsEmpty());
}

// ---- Daylight saving time

TEST(DaylightSaving, does_not_lengthen_a_run_in_spring) {
    const Zone here(central_europe);
    const Log log =
        read_run_at("2026-03-29T01:59:58", "2026-03-29T03:00:01", "2026-03-29T03:00:03");
    EXPECT_FLOAT_EQ(seconds_of(log, Phase::module), 3);
    EXPECT_FLOAT_EQ(log.runs.at(0).seconds, 5);
    EXPECT_EQ(began(log), "2026-03-29T01:59:58+01:00");
    EXPECT_EQ(ended(log), "2026-03-29T03:00:03+02:00");
    EXPECT_THAT(identity_warnings(log), IsEmpty());
}

TEST(DaylightSaving, does_not_turn_a_run_back_in_autumn) {
    const Zone here(central_europe);
    const Log log =
        read_run_at("2026-10-25T02:59:58", "2026-10-25T02:00:01", "2026-10-25T02:00:03");
    EXPECT_FLOAT_EQ(seconds_of(log, Phase::module), 3);
    EXPECT_FLOAT_EQ(log.runs.at(0).seconds, 5);
    EXPECT_EQ(began(log), "2026-10-25T02:59:58+02:00");
    EXPECT_EQ(ended(log), "2026-10-25T02:00:03+01:00");
    EXPECT_THAT(identity_warnings(log), IsEmpty());
}

TEST(LocalZone, goes_twice_through_the_hour_that_stands_twice) {
    const Zone here(central_europe);
    LocalZone zone;
    constexpr double autumn = 1792893600; // 2026-10-25T02:00:00, as if it were UTC
    EXPECT_DOUBLE_EQ(zone.instant(autumn + 1800).utc, autumn + 1800 - 7200);
    EXPECT_DOUBLE_EQ(zone.instant(autumn + 3599).utc, autumn + 3599 - 7200);
    EXPECT_DOUBLE_EQ(zone.instant(autumn).utc, autumn - 3600);
    EXPECT_DOUBLE_EQ(zone.instant(autumn + 3599).utc, autumn + 3599 - 3600);
    EXPECT_DOUBLE_EQ(zone.instant(autumn + 3600).utc, autumn + 3600 - 3600);
}

// ---- Clocks that jump

TEST(ClockJump, makes_what_lies_across_it_unknown_and_is_said) {
    const Log log = read_run_at("10:00:00", "09:30:00", "09:30:02");
    EXPECT_TRUE(std::isnan(seconds_of(log, Phase::module)));
    EXPECT_FLOAT_EQ(seconds_of(log, Phase::driver), 2) << "behind it times are good again";
    EXPECT_TRUE(std::isnan(log.runs.at(0).seconds));
    EXPECT_EQ(log.runs.at(0).phase_seconds.at(index_of(Phase::module)).count, 0U);
    EXPECT_THAT(identity_warnings(log),
                ElementsAre("run 1: the clock goes back by 30 min 00 s before line 3: times across "
                            "it are taken as unknown"));
    EXPECT_EQ(nlohmann::json::parse(write_json(log)).at("runs").at(0).at("clock_jumps"), 1);
}

TEST(ClockJump, over_years_is_no_long_phase) {
    const Log log =
        read_run_at("1970-01-01T00:00:10Z", "2026-06-12T10:00:00Z", "2026-06-12T10:00:01Z");
    EXPECT_TRUE(std::isnan(seconds_of(log, Phase::module)));
    EXPECT_TRUE(std::isnan(log.runs.at(0).seconds));
    EXPECT_THAT(identity_warnings(log).at(0), HasSubstr("the clock goes on by "));
}

TEST(ClockJump, does_not_leave_half_a_phase) {
    const Log log = read_stamped({{"10:00:00", "[WIFI]WIVEX2"},
                                  {"10:00:00", "[WIFI]MODULE CONNECTED"},
                                  {"10:00:01", "[WIFI]Result file direcotry is /root/"},
                                  {"09:00:00", "[WIFI]MAC address output file x"},
                                  {"09:00:04", "[WIFI]MAC PRINT SUCCESS"},
                                  {"09:00:06", "[WIFI]ResultFile: x Updated"}});
    EXPECT_TRUE(std::isnan(seconds_of(log, Phase::mac)));
    EXPECT_EQ(log.runs.at(0).iteration_seconds.count, 0U);
}

TEST(ClockJump, between_two_runs_is_none) {
    const std::string console = "2026-06-12T10:00:00Z [WIFI]WIVEX2\n"
                                "2026-06-12T10:00:05Z [WIFI]Cleanup\n"
                                "2026-06-10T10:00:00Z [WIFI]WIVEX2\n"
                                "2026-06-10T10:00:07Z [WIFI]Cleanup\n";
    const Log log = read(console);
    EXPECT_THAT(identity_warnings(log), IsEmpty());
    EXPECT_FLOAT_EQ(log.runs.at(0).seconds, 5);
    EXPECT_EQ(ended(log), "2026-06-12T10:00:05+00:00");
    EXPECT_FLOAT_EQ(log.runs.at(1).seconds, 7);
}

TEST(ClockJump, is_not_seen_in_lines_that_two_writers_mixed) {
    const Log log = read_run_at("10:00:01.0", "10:00:00.5", "10:00:02.0");
    EXPECT_THAT(identity_warnings(log), IsEmpty());
    EXPECT_FLOAT_EQ(seconds_of(log, Phase::module), 0);
    EXPECT_FLOAT_EQ(log.runs.at(0).seconds, 1);
}

TEST(ClockJump, is_not_seen_at_new_year) {
    const Log log = read_run_at("Dec 31 23:59:58", "Jan  1 00:00:02", "Jan  1 00:00:03");
    EXPECT_THAT(identity_warnings(log), IsEmpty());
    EXPECT_FLOAT_EQ(seconds_of(log, Phase::module), 4);
}

double stepping_clock() {
    static double seconds = 1781252472;
    seconds += 3600;
    return seconds;
}

TEST(ClockJump, of_this_machine_is_said_and_leaves_the_times_of_arrival) {
    ReaderOptions options;
    options.arrival_times = true;
    options.wall_clock = stepping_clock;
    RunReader reader(options);
    reader.feed(banner + checks_pass, 100);
    reader.feed(end, 103);
    reader.finish(103);
    EXPECT_FLOAT_EQ(reader.log().runs.at(0).seconds, 3);
    ASSERT_EQ(identity_warnings(reader.log()).size(), 1U);
    EXPECT_THAT(identity_warnings(reader.log()).at(0),
                HasSubstr("its begin and its end do not fit together"));
}

} // namespace

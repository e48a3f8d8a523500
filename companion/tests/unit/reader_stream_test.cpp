// SPDX-License-Identifier: Apache-2.0
// Consoles that are disturbed, timed, read while the run goes on, or endless.

#include "consoles.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace {

using namespace report_test;
using namespace wivex::report;

// ---- Disturbed consoles

TEST(RunReader, reads_a_console_that_begins_in_the_middle) {
    const auto run = read_run("ul...\n" + disconnect + session_closes + legacy_pass + end);
    EXPECT_EQ(run.started, 2U);
    EXPECT_EQ(run.count(Outcome::passed), 1U);
    EXPECT_EQ(run.count(Outcome::unfinished), 1U) << "nobody saw the checks of the first one";
}

TEST(RunReader, reads_a_serial_console_with_carriage_returns_and_noise) {
    std::string console = banner + legacy_pass + legacy_pass + end;
    std::string serial;
    for (const char c : console) {
        serial += c == '\n' ? std::string("\r\n") : std::string(1, c);
    }
    serial.insert(serial.find("[WIFI]MODULE"), std::string("\0\xff\x80", 3));
    const auto run = read_run(serial);
    EXPECT_EQ(run.count(Outcome::passed), 2U);
}

TEST(RunReader, counts_lines_of_others) {
    const Log log = read(banner + "usb 1-1: new high-speed USB device\n" + legacy_pass + end);
    EXPECT_EQ(log.unknown_lines, 1U);
}

TEST(RunReader, reads_the_same_from_single_bytes_as_from_the_whole) {
    const std::string console = banner + legacy_pass + device_until_role + interrupt;
    RunReader reader;
    for (const char c : console) {
        reader.feed(std::string_view(&c, 1));
    }
    reader.finish();
    const wivex::report::Run& run = reader.log().runs.back();
    const auto whole = read_run(console);
    EXPECT_EQ(run.started, whole.started);
    EXPECT_EQ(run.outcomes, whole.outcomes);
    EXPECT_EQ(run.verdicts, whole.verdicts);
}

// ---- Times

TEST(RunReader, takes_the_arrival_of_lines_for_their_times) {
    RunReader reader({Mode::unknown, true});
    reader.feed(banner, 100);
    reader.feed(checks_pass, 100);
    reader.feed("Scan Command Sent Successfully...\nScan_Results Command Sent Successfully...\n",
                103.5);
    reader.feed("Call to SELECT_NETWORK is Successful...\n", 105);
    reader.feed(disconnect + session_closes, 106);
    reader.feed(legacy_pass, 108);
    reader.feed(end, 110);
    reader.finish(110);
    const wivex::report::Run& run = reader.log().runs.back();
    EXPECT_EQ(run.times, TimeSource::arrival);
    EXPECT_FLOAT_EQ(run.iterations.at(0).phase(Phase::scan).seconds, 3.5F);
    EXPECT_FLOAT_EQ(run.iterations.at(0).phase(Phase::associate).seconds, 1.5F);
    EXPECT_FLOAT_EQ(run.iterations.at(0).seconds, 6);
    EXPECT_FLOAT_EQ(run.iterations.at(1).start, 8);
    EXPECT_FLOAT_EQ(run.seconds, 10);
}

TEST(RunReader, does_not_take_the_times_of_the_disk_for_those_of_the_run) {
    RunReader reader({Mode::unknown, true});
    reader.feed(banner + legacy_pass + legacy_pass + end, 50);
    reader.finish(51);
    const wivex::report::Run& run = reader.log().runs.back();
    EXPECT_EQ(run.times, TimeSource::none);
    EXPECT_TRUE(std::isnan(run.iterations.at(0).phase(Phase::scan).seconds));
    EXPECT_EQ(run.phase_seconds.at(index_of(Phase::scan)).count, 0U);
}

TEST(RunReader, takes_times_from_the_stamps_of_a_logging_tool) {
    std::string console;
    int line = 0;
    const std::string plain = banner + legacy_pass + end;
    for (std::size_t at = 0; at < plain.size(); ++line) {
        const std::size_t newline = plain.find('\n', at);
        console += "2024-06-12T10:00:" + std::to_string(10 + line) + " " +
                   plain.substr(at, newline + 1 - at);
        at = newline + 1;
    }
    const auto run = read_run(console);
    EXPECT_EQ(run.times, TimeSource::stamps);
    EXPECT_EQ(run.began, "2024-06-12 10:00:11");
    EXPECT_EQ(run.count(Outcome::passed), 1U);
    EXPECT_FLOAT_EQ(run.iterations.at(0).phase(Phase::dhcp).seconds, 4);
}

TEST(RunReader, goes_on_past_midnight) {
    RunReader reader;
    const auto stamped = [&](const std::string& time, const std::string& text) {
        reader.feed(time + " " + text + "\n");
    };
    stamped("23:59:50", "[WIFI]WIVEX2");
    stamped("23:59:55", "[WIFI]MODULE CONNECTED");
    stamped("00:00:05", "[WIFI]WIFI DRIVER READY");
    stamped("00:00:06", "[WIFI]ResultFile: x Updated");
    reader.finish();
    EXPECT_FLOAT_EQ(reader.log().runs.back().seconds, 16);
    EXPECT_FLOAT_EQ(reader.log().runs.back().iterations.at(0).phase(Phase::driver).seconds, 10);
}

// ---- Now

TEST(RunReader, tells_the_phase_that_is_under_way) {
    RunReader reader({Mode::unknown, true});
    reader.feed(banner + checks_pass + scan_and_associate + "Executing dhclient...\n", 5);
    EXPECT_TRUE(reader.progress().now.in_iteration);
    EXPECT_EQ(reader.progress().now.phase, Phase::dhcp);
    reader.feed("Command to udhcpc is successful...\n", 7);
    EXPECT_EQ(reader.progress().now.phase, Phase::traffic);
    EXPECT_DOUBLE_EQ(reader.progress().now.phase_since, 7);
    reader.feed("[  3]  0.0- 1.0 sec  11.0 MBytes  92.3 Mbits/sec\n", 8);
    EXPECT_DOUBLE_EQ(reader.progress().now.megabits_per_second, 92.3F);
}

// ---- Bounds

TEST(RunReader, stays_of_bounded_size_in_an_endless_run) {
    RunReader reader;
    reader.feed(banner);
    const std::string failing =
        checks_pass + "Fail to send Scan Command!!!\nERROR:SCAN-FAIL\n" + session_closes;
    constexpr std::uint32_t iterations = 20000;
    for (std::uint32_t i = 0; i < iterations; ++i) {
        reader.feed(i % 4 == 0 ? failing : legacy_pass);
    }
    reader.feed(end);
    reader.finish();
    const wivex::report::Run& run = reader.log().runs.back();
    EXPECT_EQ(run.started, iterations);
    EXPECT_EQ(run.failures_of_test_case(8), iterations / 4);
    EXPECT_EQ(run.iterations.size(), most_detailed_iterations);
    EXPECT_EQ(run.failures.size(), most_detailed_failures_of_cause);
    EXPECT_LE(run.timeline.slices().size(), most_slices);
    std::uint32_t counted = 0;
    for (const Slice& slice : run.timeline.slices()) {
        EXPECT_EQ(slice.first, counted);
        counted += slice.iterations;
    }
    EXPECT_EQ(counted, iterations);
}

} // namespace

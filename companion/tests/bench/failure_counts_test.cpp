// SPDX-License-Identifier: Apache-2.0
// For every scenario of the bench and every mode: the failures that the report counts from the
// console are those of the result file that the tool wrote.

#include "bench_run.hpp"
#include "model/modes.hpp"
#include "reader/run_reader.hpp"
#include "recordings.hpp"
#include "scenario_names.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using bench_test::Bench;
using bench_test::BenchRun;
using namespace wivex::report;

struct Rehearsal {
    std::string scenario;
    std::vector<std::string> modes;
};

std::ostream& operator<<(std::ostream& stream, const Rehearsal& rehearsal) {
    stream << rehearsal.scenario;
    for (const std::string& mode : rehearsal.modes) {
        stream << " " << mode;
    }
    return stream;
}

std::string read_text(const fs::path& path) {
    std::ifstream file(path);
    std::stringstream text;
    text << file.rdbuf();
    return text.str();
}

// The modes that a scenario in the top folder is about, going by its name.
bool is_main_mode(const Rehearsal& rehearsal) {
    const bool direct = rehearsal.scenario.starts_with("p2p-");
    const std::string& mode = rehearsal.modes[0];
    return rehearsal.scenario.find('/') == std::string::npos &&
           (direct ? mode == "-c" || mode == "-d" : mode == "-w");
}

// Scenarios in folders are about the checks beside the modes, unless a folder is about the scan.
// The modes behind the scan: each associates or forms a group.
std::vector<std::string> scripted_modes() {
    std::vector<std::string> options;
    for (const ModeRow& row : mode_rows()) {
        if (row.test_case > test_case_of(Mode::scan)) {
            options.push_back(std::string("-") + row.letter);
        }
    }
    return options;
}

std::vector<Rehearsal> find_rehearsals() {
    std::vector<Rehearsal> list;
    for (const std::string& name : test_tools::scenario_names(SCENARIO_FOLDER)) {
        const std::size_t slash = name.find('/');
        const std::string group = slash == std::string::npos ? "" : name.substr(0, slash);
        if (group.empty()) {
            for (const std::string& mode : scripted_modes()) {
                list.push_back({name, {mode}});
            }
        }
        if (group.empty() || group.find("scan") != std::string::npos) {
            list.push_back({name, {"-S"}});
        } else {
            list.push_back({name, {"-l", "-M"}});
        }
    }
    return list;
}

// Every test is a process that asks more than once.
const std::vector<Rehearsal>& all_rehearsals() {
    static const std::vector<Rehearsal> list = find_rehearsals();
    return list;
}

std::string name_of_rehearsal(const testing::TestParamInfo<Rehearsal>& info) {
    std::string name = info.param.scenario;
    for (const std::string& mode : info.param.modes) {
        name += mode;
    }
    std::ranges::replace_if(
        name, [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
    return name;
}

// For the test of false greens, which disturbs what was recorded here.
void keep_recording(const BenchRun& bench) {
    const auto* const test = testing::UnitTest::GetInstance()->current_test_info();
    std::string name = std::string(test->test_suite_name()) + "." + test->name();
    std::ranges::replace(name, '/', '-');
    report_test::keep(RECORDINGS_FOLDER, {name, bench.out, bench.result_file()});
}

std::map<int, unsigned> counts_of(const std::string& result_file) {
    std::map<int, unsigned> counts;
    std::istringstream lines(result_file);
    for (std::string line; std::getline(lines, line);) {
        int number = 0;
        unsigned failures = 0;
        if (std::sscanf(line.c_str(), "Test case %d fail # %u", &number, &failures) == 2 ||
            std::sscanf(line.c_str(), "Test case %d passed", &number) == 1) {
            counts[number] = failures;
        }
    }
    return counts;
}

wivex::report::Run read_console(const std::string& console, Mode mode) {
    ReaderOptions options;
    options.mode = mode;
    RunReader reader(options);
    reader.feed(console);
    reader.finish();
    return reader.log().runs.empty() ? wivex::report::Run() : reader.log().runs.back();
}

// When nothing but the failure to reach the supplicant stands in the console, the modes look the
// same and the user has to say which it was.
wivex::report::Run read_console(const BenchRun& bench, const Rehearsal& rehearsal) {
    wivex::report::Run run = read_console(bench.out, Mode::unknown);
    if (run.failures_without_test_case() != 0) {
        run = read_console(bench.out, mode_of_option(rehearsal.modes[0][1]));
    }
    return run;
}

// The clock runs faster than a real exchange of addresses or traffic can follow, so both are
// played where the scenario is not about them. What never ends is interrupted.
Bench prepared(const std::string& scenario) {
    const std::string text = read_text(fs::path(SCENARIO_FOLDER) / (scenario + ".scenario"));
    Bench bench(scenario);
    if (text.find("udhcpc") == std::string::npos && text.find("dhcp") == std::string::npos) {
        bench.line("program udhcpc runs \"exit 0\"").line("program killall runs \"exit 0\"");
    }
    if (text.find("iperf") == std::string::npos) {
        bench.line("config check_iperf=yes")
            .line("program iperf runs \"echo '[  3]  0.0-10.0 sec  112 MBytes  94.1 "
                  "Mbits/sec'\"");
    }
    return bench.set("p2p_iface_ip", "192.168.49.2").faster(20);
}

Bench rehearsed(const Rehearsal& rehearsal) {
    std::vector<std::string> arguments = rehearsal.modes;
    if (std::ranges::find(arguments, "-m") == arguments.end()) {
        arguments.insert(arguments.end(), {"-m", "2"});
    }
    // Only the own group runs for ever by design.
    const bool serves = rehearsal.modes[0] == "-g";
    return prepared(rehearsal.scenario)
        .signal(serves ? "INT@5000ms" : "INT@9000ms")
        .args(arguments);
}

void expect_equal(const BenchRun& bench, const Rehearsal& rehearsal) {
    keep_recording(bench);
    const wivex::report::Run run = read_console(bench, rehearsal);
    if (!bench.result_file()) {
        // Only a DIAG device without data ends the tool before it writes its results.
        EXPECT_EQ(run.causes.at(index_of(Cause::diag_read)).failures, 1U) << bench.out;
        EXPECT_FALSE(run.result_written);
        return;
    }
    const std::map<int, unsigned> expected = counts_of(*bench.result_file());
    ASSERT_FALSE(expected.empty());
    EXPECT_TRUE(run.result_written);
    for (int number = 1; number <= 10; ++number) {
        const auto found = expected.find(number);
        EXPECT_EQ(run.failures_of_test_case(number), found == expected.end() ? 0 : found->second)
            << "test case " << number << " of\n"
            << *bench.result_file() << "\nwith the console\n"
            << bench.out;
    }
}

class FailureCounts : public testing::TestWithParam<Rehearsal> {};

TEST_P(FailureCounts, equal_the_result_file) {
    expect_equal(rehearsed(GetParam()).streams_together().run(), GetParam());
}

INSTANTIATE_TEST_SUITE_P(Scenarios, FailureCounts, testing::ValuesIn(all_rehearsals()),
                         name_of_rehearsal);

// With -u other lines stand between; each check by itself has only few.
std::vector<Rehearsal> rehearsals_with_other_options() {
    std::vector<Rehearsal> list;
    for (const Rehearsal& rehearsal : all_rehearsals()) {
        if (rehearsal.modes.size() > 1) {
            for (const std::string& mode : rehearsal.modes) {
                list.push_back({rehearsal.scenario, {mode, "-m", "1"}});
            }
        } else if (is_main_mode(rehearsal)) {
            list.push_back({rehearsal.scenario, {rehearsal.modes[0], "-u"}});
        }
    }
    return list;
}

INSTANTIATE_TEST_SUITE_P(OtherOptions, FailureCounts,
                         testing::ValuesIn(rehearsals_with_other_options()), name_of_rehearsal);

// The softAP mode writes no result file: its consoles are only recorded.
class SoftAp : public testing::TestWithParam<std::string> {};

TEST_P(SoftAp, leaves_no_result_file) {
    const BenchRun run = Bench(GetParam()).args({"-A", "-m", "2"}).streams_together().run();
    EXPECT_FALSE(run.result_file());
    keep_recording(run);
}

INSTANTIATE_TEST_SUITE_P(Recorded, SoftAp,
                         testing::Values("pass", "interface-down", "interface-absent",
                                         "module-absent"));

class FailureCountsOfStandardOutput : public testing::TestWithParam<Rehearsal> {};

TEST_P(FailureCountsOfStandardOutput, equal_the_result_file) {
    BenchRun run = rehearsed(GetParam()).run();
    // Which read went wrong is told on standard error alone, and then there is no result file.
    ASSERT_TRUE(run.result_file());
    expect_equal(run, GetParam());
}

std::vector<Rehearsal> main_rehearsals() {
    std::vector<Rehearsal> list = all_rehearsals();
    std::erase_if(list, [](const Rehearsal& one) { return !is_main_mode(one); });
    return list;
}

INSTANTIATE_TEST_SUITE_P(Scenarios, FailureCountsOfStandardOutput,
                         testing::ValuesIn(main_rehearsals()), name_of_rehearsal);

// An interrupt can come after a failure was told and before the run loop has recorded it.
struct Interrupt {
    std::string scenario;
    std::string mode;
    std::string when;
};

std::ostream& operator<<(std::ostream& stream, const Interrupt& interrupt) {
    return stream << interrupt.scenario << " " << interrupt.mode << " " << interrupt.when;
}

class FailureCountsOfInterruptedRun : public testing::TestWithParam<Interrupt> {};

TEST_P(FailureCountsOfInterruptedRun, equal_the_result_file) {
    const Interrupt& interrupt = GetParam();
    const Rehearsal rehearsal{interrupt.scenario, {interrupt.mode}};
    const BenchRun bench = prepared(interrupt.scenario)
                               .line("supplicant ignores \"DETACH\"")
                               .signal(interrupt.when)
                               .args({interrupt.mode, "-m", "3"})
                               .streams_together()
                               .run();
    expect_equal(bench, rehearsal);
}

INSTANTIATE_TEST_SUITE_P(
    WhileTheSessionCloses, FailureCountsOfInterruptedRun,
    testing::Values(Interrupt{"network-refused-at-psk", "-w", "INT@command:DETACH"},
                    Interrupt{"network-refused-at-psk", "-w", "INT@command:DETACH#2+50ms"},
                    Interrupt{"scan-refused", "-w", "INT@command:DETACH#2"},
                    Interrupt{"p2p-connect-refused", "-c", "INT@command:DETACH"},
                    Interrupt{"p2p-connect-refused", "-c", "INT@command:DETACH#2+100ms"},
                    Interrupt{"p2p-find-refused", "-d", "INT@command:DETACH"}));

INSTANTIATE_TEST_SUITE_P(AtAnyTime, FailureCountsOfInterruptedRun,
                         testing::Values(Interrupt{"select-refused", "-w", "INT@150ms"},
                                         Interrupt{"select-refused", "-w", "INT@400ms"},
                                         Interrupt{"disable-refused", "-w", "INT@700ms"},
                                         Interrupt{"supplicant-absent", "-w", "INT@60ms"},
                                         Interrupt{"supplicant-absent", "-c", "INT@900ms"},
                                         Interrupt{"p2p-peer-never-found", "-d", "INT@3300ms"},
                                         Interrupt{"attach-refused", "-w", "INT@500ms"}));

TEST(SubCauses, tell_a_wrong_pass_phrase) {
    const BenchRun bench =
        prepared("wrong-pass-phrase").args({"-w", "-u"}).streams_together().run();
    const wivex::report::Run run = read_console(bench.out, Mode::unknown);
    ASSERT_EQ(run.failures.size(), 1U) << bench.out;
    EXPECT_EQ(run.failures[0].sub_cause, SubCause::wrong_key);
}

// An access point may be called like anything that the tool prints.
TEST(FailureCountsOfScan, are_not_taken_from_names_of_access_points) {
    const BenchRun bench = Bench()
                               .line("air hears 02:00:00:00:02:01 -4000 \"SCAN FAIL\"")
                               .line("air hears 02:00:00:00:02:02 -4100 \"### LOOPBACK FAIL ###\"")
                               .line("air hears 02:00:00:00:02:03 -4200 \"MODULE CONNECTED\"")
                               .line("air hears 02:00:00:00:02:04 -4300 \"SCAN FAIL again\"")
                               .line("air aborts 3")
                               .args({"-SSCAN", "-m", "3"})
                               .faster(20)
                               .streams_together()
                               .run();
    expect_equal(bench, {"names", {"-S"}});
    const wivex::report::Run run = read_console(bench.out, Mode::unknown);
    EXPECT_EQ(run.started, 3U);
    EXPECT_EQ(run.failures_of_test_case(5), 1U) << bench.out;
    ASSERT_EQ(run.access_points.size(), 4U) << bench.out;
    EXPECT_EQ(run.access_points[0].times_seen, 2U);
}

} // namespace

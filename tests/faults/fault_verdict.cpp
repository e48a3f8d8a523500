// SPDX-License-Identifier: Apache-2.0
#include "fault_verdict.hpp"

#include "call_log.hpp"
#include "console_results.hpp"
#include "evidence.hpp"
#include "text_parts.hpp"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <vector>

namespace faults {

namespace {

using bench_test::BenchRun;
using bench_test::contains;
using bench_test::contains_one_of;
using bench_test::lines_of;

constexpr int bench_failure = 125;
constexpr int killed = 128;

constexpr std::string_view interrupt_taken = "[WIFI] Got ^C.";
constexpr std::string_view kill_taken = "[WIFI] Got Kill signal...";
constexpr std::string_view handler_ended = "[WIFI] Done..";

/// What the console says when there are no results, or not all of them.
constexpr std::array<std::string_view, 5> loss_told{
    "[WIFI]Unable to open Result File: ", "[WIFI]Unable to write Result File: ",
    "[WIFI]Unable to write results", "[WIFI]Out of memory", "[WIFI]Configuration file problem."};
constexpr std::string_view results_saved = "[WIFI]ResultFile: /root/WIFIResult Updated\n";

/// The one failure that ends a run at once, with status 1 and without results.
constexpr std::array<std::string_view, 2> memory_of_the_chip_told{"err ReadTargetRange failed",
                                                                  "to open DIAG file"};

constexpr std::string_view softap_created = "[WIFI]softAP created successfuly.\n";
constexpr std::string_view softap_problem = "[WIFI]ERROR:create softAP problem\n";
constexpr std::string_view driver_ready = "[WIFI]WIFI DRIVER READY\n";

constexpr std::string_view loopback_parameter = "parameters/usbloop_enable";

/// Steps whose outcome the modes do not look at, by design: probes of the status, and clearing away
/// a group that an earlier run may have left.
constexpr std::array<std::string_view, 3> steps_ignored{
    "command STATUS", "line wpa_state=", "command P2P_GROUP_REMOVE wlan0"};

FaultVerdict bad(Outcome outcome, const std::string& problem) {
    return {outcome, problem};
}

/// Whether the call was to write to the console, and its line is gone.
bool lost_a_line(const Fault& fault) {
    constexpr std::array<std::string_view, 4> console{"1, ", "2, ", "1<", "2<"};
    return fault.call.name == "write" &&
           std::any_of(console.begin(), console.end(), [&fault](std::string_view descriptor) {
               return fault.call.arguments.starts_with(descriptor);
           });
}

/// The numbers of the test cases of a result file; nothing when a line is not whole.
std::optional<std::vector<int>> test_cases_of(const std::string& results) {
    constexpr std::string_view begin = "Test case ";
    std::vector<int> numbers;
    if (!results.ends_with('\n')) {
        return std::nullopt;
    }
    for (const std::string& line : lines_of(results)) {
        if (!line.starts_with(begin) ||
            !(line.ends_with(" passed ") || contains(line, " fail # "))) {
            return std::nullopt;
        }
        numbers.push_back(std::stoi(line.substr(begin.size())));
    }
    return numbers;
}

/// Whether the results have a whole line for each test case of the arguments.
bool is_complete(const Fault& fault, const BenchRun& run) {
    const auto expected = bench_test::possible_result_files("", arguments_of(*fault.mode));
    const auto numbers = test_cases_of(run.result_file().value_or(""));
    return numbers && numbers == test_cases_of(expected.front());
}

/// Whether the last of its lines, that of the mode, is a pass.
bool mode_passed(const std::string& results) {
    return results.ends_with(" passed \n");
}

// ---- the parts of a judgement ------------------------------------------------------------------

std::optional<FaultVerdict> judge_end(const BenchRun& run) {
    if (run.timed_out) {
        return bad(Outcome::hang, "did not end");
    }
    if (run.status == bench_failure) {
        return bad(Outcome::not_tried, "the bench failed");
    }
    if (run.status > killed) {
        return bad(Outcome::crash, "ended by signal " + std::to_string(run.status - killed));
    }
    const bool told = run.status == 1 && contains_one_of(run.out, memory_of_the_chip_told);
    if (run.status != 0 && !told) {
        return bad(Outcome::crash, "exit status " + std::to_string(run.status));
    }
    return std::nullopt;
}

FaultVerdict judge_console_verdict(const Fault& fault, const BenchRun& run) {
    const bool created = contains(run.out, softap_created);
    const bool problem = contains(run.out, softap_problem);
    if (created && problem) {
        return bad(Outcome::false_verdict, "both verdicts");
    }
    if (lost_a_line(fault) || contains_one_of(run.out, loss_told)) {
        return {Outcome::good, ""};
    }
    if (!created && !problem) {
        return bad(Outcome::lost_verdict, "no verdict");
    }
    // The driver's absence is the success, by design.
    if (problem != contains(run.out, driver_ready)) {
        return bad(Outcome::false_verdict, "the verdict does not go with the driver");
    }
    return {Outcome::good, ""};
}

/// A run that took the signal.
FaultVerdict judge_killed(const Fault& fault, const BenchRun& whole, const BenchRun& run) {
    if (run.result_file()) {
        return bad(Outcome::false_verdict, "a kill must not write results");
    }
    if (!lost_a_line(fault) && !contains(run.out, handler_ended)) {
        return bad(Outcome::lost_verdict, "the kill was not handled to its end");
    }
    const auto parameter = run.files.find(std::string(loopback_parameter));
    const bool still_on = parameter != run.files.end() && parameter->second != "0\n";
    if (still_on && failures_told(whole, run).empty()) {
        return bad(Outcome::false_verdict, "the loopback stays on, and nothing says so");
    }
    return {Outcome::good, ""};
}

/// A result file that is not whole, or none.
FaultVerdict judge_loss(const Fault& fault, const BenchRun& run) {
    if (run.status == 1) {
        return {Outcome::good, ""};
    }
    const std::string left = run.result_file().value_or("no result file");
    if (contains(run.out, results_saved)) {
        return bad(Outcome::lost_verdict, "called saved, but is not whole: " + left);
    }
    if (!contains_one_of(run.out, loss_told)) {
        return bad(Outcome::lost_verdict, "not whole, and nothing says so: " + left);
    }
    return lost_a_line(fault)
               ? bad(Outcome::lost_verdict, "a line of the console cost the results: " + left)
               : FaultVerdict{Outcome::good, ""};
}

std::string join(const std::vector<std::string>& texts) {
    std::string all;
    for (const std::string& text : texts) {
        all += "\n    " + text;
    }
    return all;
}

std::vector<std::string> steps_that_count(const BenchRun& whole, const BenchRun& run) {
    std::vector<std::string> steps = steps_missing(whole, run);
    std::erase_if(steps, [](const std::string& step) {
        return std::any_of(steps_ignored.begin(), steps_ignored.end(),
                           [&step](std::string_view begin) { return step.starts_with(begin); });
    });
    return steps;
}

// An interrupt can come between a failure that was shown and its record.
bool goes_with_the_console(const Fault& fault, const BenchRun& run, std::string& expected) {
    const std::string_view console = run.out;
    const auto end = console.find(interrupt_taken);
    auto possible =
        bench_test::possible_result_files(console.substr(0, end), arguments_of(*fault.mode));
    expected = possible.front();
    if (end == std::string_view::npos) {
        possible.resize(1);
    }
    return std::find(possible.begin(), possible.end(), run.result_file()) != possible.end();
}

/// A complete result file: whether it goes with the console, and a pass with what was done.
FaultVerdict judge_results(const Fault& fault, const BenchRun& whole, const BenchRun& run) {
    const std::string results = run.result_file().value_or("");
    if (lost_a_line(fault)) {
        return results == whole.result_file()
                   ? FaultVerdict{Outcome::good, ""}
                   : bad(Outcome::false_verdict, "a lost line changed the results: " + results);
    }
    std::string expected;
    if (!goes_with_the_console(fault, run, expected)) {
        return bad(Outcome::false_verdict,
                   "does not go with the console: " + results + "    instead of: " + expected);
    }
    if (contains(run.out, "SHIELD ROOM") && !contains(whole.out, "SHIELD ROOM")) {
        return bad(Outcome::false_verdict, "a shielded room where there is none");
    }
    const auto steps = steps_that_count(whole, run);
    if (mode_passed(results) && !steps.empty() && failures_told(whole, run).empty()) {
        return bad(Outcome::false_verdict, "passed, but missing without a word:" + join(steps));
    }
    return {Outcome::good, ""};
}

FaultVerdict judge_whole_run(const Fault& fault, const BenchRun& whole, const BenchRun& run) {
    if (fault.mode->ending == Ending::console_only) {
        return judge_console_verdict(fault, run);
    }
    // A failure can keep a run from where it would have been killed.
    const bool kill_lost = lost_a_line(fault) && contains(fault.call.arguments, "Got Kill");
    if (fault.mode->ending == Ending::killed && (contains(run.out, kill_taken) || kill_lost)) {
        return judge_killed(fault, whole, run);
    }
    return is_complete(fault, run) ? judge_results(fault, whole, run) : judge_loss(fault, run);
}

} // namespace

const char* name_of(Outcome outcome) {
    constexpr std::array<const char*, 6> names{"good",         "crash",         "hang",
                                               "lost verdict", "false verdict", "not tried"};
    static_assert(names.size() == static_cast<std::size_t>(Outcome::not_tried) + 1);
    return names.at(static_cast<std::size_t>(outcome));
}

FaultVerdict judge(const Fault& fault, const BenchRun& whole, const BenchRun& run) {
    if (const auto ended = judge_end(run)) {
        return *ended;
    }
    const auto log = run.files.find("calls");
    const auto failed = log == run.files.end() ? std::nullopt : call_that_failed(log->second);
    if (!failed) {
        return bad(Outcome::not_tried, "the call was not made");
    }
    const auto possible = failures_of(*failed);
    if (std::find(possible.begin(), possible.end(), fault.failure) == possible.end()) {
        return bad(Outcome::not_tried, "another call stood at its place");
    }
    return judge_whole_run({fault.mode, *failed, fault.failure}, whole, run);
}

} // namespace faults

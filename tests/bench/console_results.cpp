// SPDX-License-Identifier: Apache-2.0
#include "console_results.hpp"

#include "expected.hpp"
#include "text_parts.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>

namespace bench_test {
namespace {

constexpr std::string_view iteration_begins = "\n[WIFI]Chip type is = ";
constexpr std::string_view iteration_begins_without_module = "\n[WIFI]ERROR:Module not inserted";

/// A text that a mode shows when it fails, and how often the failure is filed.
struct Failure {
    std::string_view text;
    int records;
};

constexpr std::string_view no_session = "unable to open sockets\n";

constexpr std::array<Failure, 7> failures_of_wlan{{{no_session, 2}, // this code is filed twice
                                                   {"ERROR:SCAN FAIL-BUSY\n", 1},
                                                   {"ERROR:SCAN-FAIL\n", 1},
                                                   {"Fail to send Scan_Results Command!!!\n", 1},
                                                   {"_NETWORK COMMAND FAILED\n", 1},
                                                   {"Unable to run Iperf", 1},
                                                   {"Fail to send command DISABLE_NETWORK", 1}}};
constexpr std::array<Failure, 7> failures_of_p2p_device{
    {{no_session, 1},
     {"P2P FIND Fail \n", 1},
     {"connect:TEST CASE FAIL\n", 1},
     {"Unable to recieve P2P-GROUP-STARTED event.\n", 1},
     {"Fail to start udhcpc!!!\n", 1},
     {"Unable to assign ip to ", 1},
     {"Unable to start dhcpd\n", 1}}};
constexpr std::array<Failure, 6> failures_of_p2p_client{{{no_session, 1},
                                                         {"P2P FIND FAIL \n", 1},
                                                         {"CONNECT:TEST CASE FAIL\n", 1},
                                                         {"Fail to start udhcpc!!!\n", 1},
                                                         {"Unable to run Iperf", 1},
                                                         {"disconnect:TEST CASE FAIL\n", 1}}};
constexpr std::array<Failure, 1> failures_of_group_owner{{{no_session, 1}}};

/// A scripted mode; of several the first in this order runs, unless the scan is chosen.
struct ScriptedMode {
    char option;
    int test_case;
    std::span<const Failure> failures;
};

constexpr std::array<ScriptedMode, 4> scripted_modes{{{'d', 6, failures_of_p2p_device},
                                                      {'g', 7, failures_of_group_owner},
                                                      {'w', 8, failures_of_wlan},
                                                      {'c', 9, failures_of_p2p_client}}};

/// A check that files its failure as soon as it has shown it.
struct Check {
    /// Of the option that chooses it; 0 for one that always runs.
    char option = 0;
    int test_case = 0;
    std::array<std::string_view, 2> failures;
};

constexpr std::array<Check, 5> checks_of_an_iteration{
    {{0, 1, {"[WIFI]ERROR:Module not inserted", {}}},
     {0,
      2,
      {"[WIFI]ERROR:WiFi driver is not insmoded properly",
       "[WIFI]ERROR:WiFi network interface not up"}},
     {'M', 3, {"[WIFI]MAC PRINT FAIL\n", {}}},
     {'l', 4, {"[WIFI]### LOOPBACK FAIL ###\n", {}}},
     {'S', 5, {"[WIFI]SCAN FAIL\n", {}}}}};

/// The console of each iteration, the last one perhaps cut short.
std::vector<std::string_view> iterations_of(std::string_view console) {
    std::vector<std::size_t> starts;
    for (const auto beginning : {iteration_begins, iteration_begins_without_module}) {
        for (auto at = console.find(beginning); at != std::string_view::npos;
             at = console.find(beginning, at + 1)) {
            starts.push_back(at);
        }
    }
    std::sort(starts.begin(), starts.end());
    starts.push_back(console.size());
    std::vector<std::string_view> iterations;
    for (std::size_t index = 0; index + 1 < starts.size(); ++index) {
        iterations.push_back(console.substr(starts[index], starts[index + 1] - starts[index]));
    }
    return iterations;
}

int records_in(std::string_view iteration, const ScriptedMode& mode) {
    for (const Failure& failure : mode.failures) {
        if (contains(iteration, failure.text)) {
            return failure.records;
        }
    }
    return 0;
}

/// Whether an iteration that shows a failure must have filed it: nothing is waited for any more.
bool is_filed(std::string_view iteration) {
    return iteration.ends_with(closed) || iteration.ends_with(no_session);
}

std::string line_for(int test_case, int failures) {
    const std::string begin = "Test case " + std::to_string(test_case) + " ";
    return begin + (failures == 0 ? "passed \n" : "fail # " + std::to_string(failures) + "\n");
}

const ScriptedMode* running_mode(const std::vector<std::string>& arguments) {
    if (chosen(arguments, 'S') || chosen(arguments, 'A')) {
        return nullptr;
    }
    for (const ScriptedMode& mode : scripted_modes) {
        if (chosen(arguments, mode.option)) {
            return &mode;
        }
    }
    return nullptr;
}

std::string result_file(std::string_view console, const std::vector<std::string>& arguments,
                        int records_of_mode) {
    std::string text;
    for (const Check& check : checks_of_an_iteration) {
        if (chosen(arguments, check.option)) {
            int failures = 0;
            for (const auto failure : check.failures) {
                failures += failure.empty() ? 0 : times(console, failure);
            }
            text += line_for(check.test_case, failures);
        }
    }
    const ScriptedMode* const running = running_mode(arguments);
    for (const ScriptedMode& mode : scripted_modes) {
        if (chosen(arguments, mode.option)) {
            text += line_for(mode.test_case, &mode == running ? records_of_mode : 0);
        }
    }
    return text;
}

} // namespace

bool chosen(const std::vector<std::string>& arguments, char option) {
    return option == 0 || std::any_of(arguments.begin(), arguments.end(), [&](const auto& text) {
               return text.size() >= 2 && text[0] == '-' && text[1] == option;
           });
}

std::vector<std::string> possible_result_files(std::string_view console,
                                               const std::vector<std::string>& arguments) {
    const ScriptedMode* const mode = running_mode(arguments);
    const auto iterations = iterations_of(console);
    if (mode == nullptr || iterations.empty()) {
        return {result_file(console, arguments, 0)};
    }
    int before = 0;
    for (std::size_t index = 0; index + 1 < iterations.size(); ++index) {
        before += records_in(iterations[index], *mode);
    }
    const int with_last = before + records_in(iterations.back(), *mode);
    std::vector<std::string> files{result_file(console, arguments, with_last)};
    if (!is_filed(iterations.back())) {
        files.push_back(result_file(console, arguments, before));
    }
    return files;
}

} // namespace bench_test

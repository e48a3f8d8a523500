// SPDX-License-Identifier: Apache-2.0
#include "storm_verdict.hpp"

#include "console_results.hpp"
#include "expected.hpp"
#include "text_parts.hpp"

#include <algorithm>
#include <array>
#include <csignal>
#include <cstddef>
#include <span>

namespace bench_test {
namespace {

constexpr int killed = 128;

constexpr std::string_view handler_stands = "[WIFI]USBFS";
constexpr std::string_view interrupt_taken = "[WIFI] Got ^C.";
constexpr std::string_view kill_taken = "[WIFI] Got Kill signal...\n";
constexpr std::string_view loopback_parameter = "parameters/usbloop_enable";

/// Whether the parts come in this order.
bool in_order(std::string_view text, std::span<const std::string_view> parts) {
    for (const auto part : parts) {
        const auto at = text.find(part);
        if (at == std::string_view::npos) {
            return false;
        }
        text.remove_prefix(at + part.size());
    }
    // A child that the signal did not reach, such as iperf, may print a last line of its own.
    return !contains(text, "[WIFI]");
}

constexpr std::array<std::string_view, 6> cleanup_lines{"[WIFI]Cleanup\n",
                                                        "[WIFI]Set value of sigterm_var\n",
                                                        "[WIFI]Closing the ctrl sockets\n",
                                                        "[WIFI]Closing the Event sockets\n",
                                                        "[WIFI]Reset Value of sigterm_var\n",
                                                        "[WIFI] Done..\n"};

Judgement bad(Verdict verdict, const std::string& problem) {
    return {verdict, 0, problem};
}

Judgement judge_interrupted(const BenchRun& run, std::string_view before, std::string_view ending,
                            const std::vector<std::string>& arguments) {
    const auto written = run.result_file();
    if (!written) {
        return bad(Verdict::lost, "no result file");
    }
    if (!ending.starts_with(interrupted)) {
        return bad(Verdict::lost, "not all is told of the result file");
    }
    const auto possible = possible_result_files(before, arguments);
    if (std::find(possible.begin(), possible.end(), *written) == possible.end()) {
        return bad(Verdict::bad, "the result file does not go with the console:\n" + *written);
    }
    return {Verdict::good, 0, ""};
}

std::string judge_killed(const BenchRun& run, std::string_view ending) {
    constexpr std::string_view chip_line = "[WIFI]Calling for chip --> ";
    ending.remove_prefix(kill_taken.size());
    if (!ending.starts_with(chip_line) || ending.size() <= chip_line.size()) {
        return "the chip is not named";
    }
    const char chip = ending[chip_line.size()];
    const auto parameter = run.files.find(std::string(loopback_parameter));
    if ((chip == '3' || chip == '5') && parameter != run.files.end() &&
        parameter->second != "0\n") {
        return "the loopback was not switched off";
    }
    if ((chip == '1' || chip == '2') && !contains(ending, "QCA 11n. Nothing to do.\n")) {
        return "nothing is said of the vendor";
    }
    return run.result_file() ? "a kill must not write the result file" : "";
}

/// Of the client sockets that are left only those of status probes may be: a probe that succeeded
/// stays open by design, and one that waits for its reply is no connection of the session.
std::string judge_sockets(const BenchRun& run) {
    const auto log = run.files.find("supplicant.log");
    for (const std::string& name : run.sockets()) {
        const std::string number = name.substr(name.rfind('-') + 1);
        if (log == run.files.end() || !contains(log->second, " " + number + " \"STATUS\"")) {
            return "a client socket was left: " + name;
        }
    }
    return {};
}

Judgement judge_lines(const BenchRun& run, const std::vector<std::string>& arguments) {
    const std::string_view console = run.out;
    const int taken = times(console, interrupt_taken) + times(console, kill_taken);
    if (taken != 1) {
        return bad(taken == 0 ? Verdict::lost : Verdict::bad, "not exactly one signal was taken");
    }
    const bool is_interrupt = contains(console, interrupt_taken);
    const auto end = console.find(is_interrupt ? interrupt_taken : kill_taken);
    const std::string_view before = console.substr(0, end);
    const std::string_view ending = console.substr(end);
    if (!in_order(ending, cleanup_lines)) {
        return bad(Verdict::lost, "the clean-up is not complete");
    }
    Judgement judgement{Verdict::good, 0, ""};
    if (is_interrupt) {
        judgement = judge_interrupted(run, before, ending, arguments);
    } else {
        judgement.problem = judge_killed(run, ending);
    }
    if (judgement.verdict == Verdict::good && judgement.problem.empty()) {
        judgement.problem = judge_sockets(run);
    }
    if (!judgement.problem.empty() && judgement.verdict == Verdict::good) {
        judgement.verdict = Verdict::bad;
    }
    return judgement;
}

/// What is the same whether somebody read the console or not; good when there is nothing to say.
Judgement judge_end(const BenchRun& run, const std::vector<std::string>& arguments,
                    const Reaction& reaction) {
    if (run.timed_out) {
        return bad(Verdict::wedged, "did not end");
    }
    const bool by_default_action = run.status == killed + SIGINT || run.status == killed + SIGTERM;
    if (by_default_action && !contains(run.out, handler_stands)) {
        return {Verdict::before_the_handler, 0, ""};
    }
    if (run.status != 0) {
        return bad(Verdict::bad, "exit status " + std::to_string(run.status));
    }
    const bool took_one = contains(run.out, interrupt_taken) || contains(run.out, kill_taken);
    if (!reaction.ms || (!took_one && chosen(arguments, 'A'))) {
        return {Verdict::after_the_end, 0, ""};
    }
    if (*reaction.ms > reaction.limit_ms) {
        return bad(Verdict::late, "took " + std::to_string(*reaction.ms) + " ms");
    }
    return {Verdict::good, *reaction.ms, ""};
}

/// Whether there is more to judge.
bool came_to_an_end(const Judgement& judgement) {
    return judgement.verdict == Verdict::good || judgement.verdict == Verdict::late;
}

/// The judgement with the console below it.
Judgement told(Judgement judgement, const BenchRun& run) {
    if (!judgement.problem.empty()) {
        judgement.problem += "\n" + run.out;
    }
    return judgement;
}

/// Whether the result file has a whole line for each test case of the arguments.
bool is_whole(const std::string& results, const std::vector<std::string>& arguments) {
    const std::string passed = possible_result_files("", arguments).front();
    std::size_t at = 0;
    for (std::size_t begin = 0; begin < passed.size(); begin = passed.find('\n', begin) + 1) {
        const std::string_view expected = std::string_view(passed).substr(begin);
        const std::string_view test_case =
            expected.substr(0, expected.find(' ', std::string_view("Test case ").size()) + 1);
        const auto end = results.find('\n', at);
        if (!std::string_view(results).substr(at).starts_with(test_case) ||
            end == std::string::npos) {
            return false;
        }
        at = end + 1;
    }
    return at == results.size();
}

} // namespace

Reaction reaction_to_first_signal(const BenchRun& run, double limit_ms) {
    const auto sent = run.signals_sent_ms();
    const auto first = std::min_element(sent.begin(), sent.end());
    return {first == sent.end() ? std::nullopt : std::optional(run.wall_ms - *first), limit_ms};
}

Reaction reaction_to_last_signal(const BenchRun& run, double limit_ms) {
    const auto sent = run.signals_sent_ms();
    const auto last = std::max_element(sent.begin(), sent.end());
    return {last == sent.end() ? std::nullopt : std::optional(run.wall_ms - *last), limit_ms};
}

Judgement judge(const BenchRun& run, const std::vector<std::string>& arguments,
                const Reaction& reaction) {
    Judgement judgement = judge_end(run, arguments, reaction);
    if (came_to_an_end(judgement)) {
        const Judgement of_lines = judge_lines(run, arguments);
        if (of_lines.verdict != Verdict::good) {
            judgement = of_lines;
        }
    }
    return told(judgement, run);
}

Judgement judge_unread(const BenchRun& run, const std::vector<std::string>& arguments, int signal,
                       const Reaction& reaction) {
    Judgement judgement = judge_end(run, arguments, reaction);
    if (!came_to_an_end(judgement)) {
        return told(judgement, run);
    }
    const auto results = run.result_file();
    if (signal == SIGTERM && results) {
        judgement = bad(Verdict::bad, "a kill must not write the result file");
    } else if (signal == SIGINT && !results) {
        judgement = bad(Verdict::lost, "no result file");
    } else if (signal == SIGINT && !is_whole(*results, arguments)) {
        judgement = bad(Verdict::lost, "the result file is not whole:\n" + *results);
    }
    return told(judgement, run);
}

Judgement judge_blocked(const BenchRun& run, const Reaction& reaction) {
    Judgement judgement = judge_end(run, {}, reaction);
    if (came_to_an_end(judgement) && !run.out.ends_with(done)) {
        judgement = bad(Verdict::lost, "the clean-up is not complete");
    }
    return told(judgement, run);
}

} // namespace bench_test

// SPDX-License-Identifier: Apache-2.0
#include "storm_kinds.hpp"

#include "bench_run.hpp"
#include "console.hpp"
#include "storm_lives.hpp"

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <thread>
#include <vector>

namespace bench_test {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using Clock = std::chrono::steady_clock;

constexpr int earliest_ms = 20;

/// One run in so many gets the other signal too, this much later at most.
constexpr int runs_to_a_second_signal = 8;
constexpr int second_signal_ms = 3;

constexpr double soon_ms = 3000;
constexpr seconds longest_run{60};

constexpr int slow_speed = 3000;
/// A handler that goes on as long as its reader does gives up after this, all in all.
constexpr double longest_patience_ms = 12000;

int draw(std::mt19937& random, int from, int to) {
    return std::uniform_int_distribution<int>(from, to)(random);
}

template <typename Choices>
const auto& draw_one(std::mt19937& random, const Choices& choices) {
    return choices.at(
        static_cast<std::size_t>(draw(random, 0, static_cast<int>(choices.size()) - 1)));
}

std::string at_ms(const char* signal, int moment_ms) {
    return std::string(signal) + "@" + std::to_string(moment_ms) + "ms";
}

const char* name_of(int signal) {
    return signal == SIGINT ? "INT" : "TERM";
}

Bench bench_of(const Life& life, const std::vector<std::string>& arguments) {
    Bench bench(life.scenario);
    bench.line(life.lines).args(arguments).streams_together().at_most(longest_run);
    return bench;
}

// ---- signals -----------------------------------------------------------------------------------

std::vector<std::string> choose_signals(int index, const Life& life, std::mt19937& random) {
    const std::array<const char*, 2> names{"INT", "TERM"};
    const auto first = static_cast<std::size_t>(index % 2);
    const int moment_ms = draw(random, earliest_ms, life.latest_ms);
    std::vector<std::string> signals{at_ms(names.at(first), moment_ms)};
    if (draw(random, 1, runs_to_a_second_signal) == 1) {
        const int later_ms = moment_ms + draw(random, 0, second_signal_ms);
        signals.push_back(at_ms(names.at(1 - first), later_ms));
    }
    return signals;
}

Attempt signal_once(int index, std::mt19937& random) {
    const Life& life = choose_life(lives_of_all_modes(), random);
    const auto arguments = arguments_of(life);
    Attempt attempt{life.name, std::string(life.name) + ":", {}, {}};
    Bench bench = bench_of(life, arguments);
    for (const std::string& signal : choose_signals(index, life, random)) {
        bench.signal(signal);
        attempt.description += " " + signal;
    }
    attempt.run = bench.run();
    attempt.judgement = judge(attempt.run, arguments, reaction_to_first_signal(attempt.run));
    return attempt;
}

// ---- ^C at a terminal --------------------------------------------------------------------------

double since_ms(Clock::time_point begin) {
    return std::chrono::duration<double, std::milli>(Clock::now() - begin).count();
}

Attempt type_once(int /*index*/, std::mt19937& random) {
    const Life& life = choose_life(lives_of_all_modes(), random);
    const auto arguments = arguments_of(life);
    const int moment_ms = draw(random, earliest_ms, life.latest_ms);
    Attempt attempt{life.name,
                    std::string(life.name) + ": ^C after " + std::to_string(moment_ms) + " ms",
                    {},
                    {}};
    Console console(ConsoleKind::cooked_terminal);
    const auto run = bench_of(life, arguments).console(console).start();
    Reaction reaction{std::nullopt, soon_ms};
    // Before the tool is there, ^C reaches nobody.
    console.shows("[WIFI]");
    if (!run->ends_unread(milliseconds(moment_ms))) {
        const auto typed = Clock::now();
        console.type("\x03");
        if (run->ends_unread(longest_run)) {
            reaction.ms = since_ms(typed);
        }
    }
    const std::string shown = console.rest(seconds(5));
    attempt.run = run->finish();
    attempt.run.out = shown;
    attempt.judgement = judge(attempt.run, arguments, reaction);
    return attempt;
}

// ---- consoles that are not read, or slowly -----------------------------------------------------

struct Drawn {
    const Life* life;
    std::vector<std::string> arguments;
    int signal;
    int moment_ms;
    std::string description;
};

Drawn draw_interrupted(int index, std::span<const Life> lives, std::mt19937& random) {
    Drawn drawn{&choose_life(lives, random), {}, index % 2 == 0 ? SIGINT : SIGTERM, 0, {}};
    drawn.arguments = arguments_of(*drawn.life);
    drawn.moment_ms = draw(random, drawn.life->latest_ms / 2, drawn.life->latest_ms);
    drawn.description =
        std::string(drawn.life->name) + ": " + at_ms(name_of(drawn.signal), drawn.moment_ms);
    return drawn;
}

struct NamedConsole {
    const char* name;
    ConsoleKind kind;
    /// Typed instead of stopping to read.
    std::string_view typed;
};

constexpr std::array<NamedConsole, 6> stalling{
    {{"cooked terminal", ConsoleKind::cooked_terminal, ""},
     {"raw terminal", ConsoleKind::raw_terminal, ""},
     {"terminal stopped by ^S", ConsoleKind::cooked_terminal, "\x13"},
     {"pipe", ConsoleKind::pipe, ""},
     {"small pipe", ConsoleKind::small_pipe, ""},
     {"socket", ConsoleKind::socket, ""}}};

Attempt stall_once(int index, std::mt19937& random) {
    // Half of the runs fill their console, the others stand anywhere when nobody reads any more.
    const bool flooding = draw(random, 0, 1) == 0;
    const Drawn drawn =
        draw_interrupted(index, flooding ? flooding_lives() : lives_of_all_modes(), random);
    const NamedConsole& chosen = draw_one(random, stalling);
    const int stalled_ms = draw(random, earliest_ms, drawn.moment_ms);
    Attempt attempt{drawn.life->name, drawn.description, {}, {}};
    attempt.description += ", a " + std::string(chosen.name) + " that stalls after " +
                           std::to_string(stalled_ms) + " ms";
    Console console(chosen.kind);
    const auto run = bench_of(*drawn.life, drawn.arguments)
                         .console(console)
                         .signal(at_ms(name_of(drawn.signal), drawn.moment_ms))
                         .start();
    std::this_thread::sleep_for(milliseconds(stalled_ms));
    if (chosen.typed.empty()) {
        console.read_at(0);
    } else {
        console.type(chosen.typed);
    }
    const bool ended = run->ends_unread(milliseconds(drawn.moment_ms) + seconds(20));
    const bool flags_changed = console.was_seen_without_blocking();
    attempt.run = ended ? run->finish() : run->abandon();
    console.type(chosen.typed.empty() ? "" : "\x11");
    console.read_at(Console::fast);
    attempt.run.out = console.rest(seconds(5));
    attempt.judgement = judge_unread(attempt.run, drawn.arguments, drawn.signal,
                                     reaction_to_first_signal(attempt.run, soon_ms));
    if (flags_changed) {
        attempt.judgement = {Verdict::bad, 0, "the console was seen without blocking"};
    }
    return attempt;
}

constexpr std::array<NamedConsole, 3> slow{{{"small pipe", ConsoleKind::small_pipe, ""},
                                            {"pipe", ConsoleKind::pipe, ""},
                                            {"cooked terminal", ConsoleKind::cooked_terminal, ""}}};

Attempt slow_once(int index, std::mt19937& random) {
    const bool flooding = draw(random, 0, 3) != 0;
    const Drawn drawn =
        draw_interrupted(index, flooding ? flooding_lives() : lives_of_all_modes(), random);
    const NamedConsole& chosen = draw_one(random, slow);
    Attempt attempt{drawn.life->name, drawn.description + ", a slow " + chosen.name, {}, {}};
    Console console(chosen.kind);
    console.read_at(slow_speed);
    const auto run = bench_of(*drawn.life, drawn.arguments)
                         .console(console)
                         .signal(at_ms(name_of(drawn.signal), drawn.moment_ms))
                         .start();
    const bool ended = run->ends_unread(milliseconds(drawn.moment_ms) + seconds(30));
    attempt.run = ended ? run->finish() : run->abandon();
    // What the run has written is not lost any more, however slowly it is read.
    console.read_at(Console::fast);
    attempt.run.out = console.rest(seconds(5));
    attempt.judgement = judge(attempt.run, drawn.arguments,
                              reaction_to_first_signal(attempt.run, longest_patience_ms));
    return attempt;
}

// ---- files that block --------------------------------------------------------------------------

/// A run that comes to a file whose opening never ends.
struct BlockedLife {
    /// Its span ends where it is certain to stand there, or anywhere before.
    Life life;
    /// Whether it is the result file: only a kill ends such a run.
    bool results;
};

constexpr const char* same_address = "driver answers address with 00:0a:f5:12:34:56\n"
                                     "driver answers variable cur_etheraddr with "
                                     "00:0a:f5:12:34:56\nfile /root/WIFIAddr blocks";

constexpr std::array<BlockedLife, 10> blocked_lives{{
    {{"results of a scan that never ends", "-w -R/tmp/result", "scan-never-ends",
      "file /tmp/result blocks", 4000, 1},
     true},
    {{"results of a flood", "-w -u -R/tmp/result", "endless-event-flood", "file /tmp/result blocks",
      4000, 1},
     true},
    {{"results at the normal end", "-M -R/tmp/result", "mac/combo-same", "file /tmp/result blocks",
      5000, 1},
     true},
    {{"status file of the run before", "-SLINE -D/tmp/status", "scan-listing",
      "file /tmp/status blocks", 3000, 1},
     false},
    {{"status file", "-SLINE -odbus -D/tmp/status", "scan-listing", "file /tmp/status blocks", 3000,
      1},
     false},
    {{"listing", "-S", "scan-listing", "file /tmp/output blocks", 3000, 1}, false},
    {{"address file", "-M", "", same_address, 3000, 1}, false},
    {{"bus at the start", "-w", "", "file /proc/bus/usb/devices blocks", 2000, 1}, false},
    {{"device list", "-w", "",
      "config device_type=other\nconfig usbdevlist=/tmp/list\nfile /tmp/list blocks", 2000, 1},
     false},
    {{"interface's flags", "-w", "", "config wifidev=/tmp/net\nfile /tmp/net/wlan0/flags blocks",
      2000, 1},
     false},
}};

Attempt block_once(int index, std::mt19937& random) {
    const BlockedLife& blocked = draw_one(random, blocked_lives);
    const Life& life = blocked.life;
    const auto arguments = arguments_of(life, 1);
    const int moment_ms = draw(random, life.latest_ms / 3, life.latest_ms);
    const int signal = index % 2 == 0 ? SIGINT : SIGTERM;
    Attempt attempt{life.name, std::string(life.name) + ":", {}, {}};
    std::vector<std::string> signals{at_ms(name_of(signal), moment_ms)};
    if (blocked.results && signal == SIGINT) {
        signals.push_back(at_ms("TERM", moment_ms + draw(random, 50, 800)));
    }
    Bench bench = bench_of(life, arguments);
    for (const std::string& one : signals) {
        bench.signal(one);
        attempt.description += " " + one;
    }
    attempt.run = bench.at_most(seconds(20)).run();
    attempt.judgement =
        blocked.results
            ? judge_blocked(attempt.run, reaction_to_last_signal(attempt.run, soon_ms))
            : judge(attempt.run, arguments, reaction_to_last_signal(attempt.run, soon_ms));
    return attempt;
}

constexpr std::array<StormKind, 5> kinds{{{"signals", signal_once},
                                          {"typed", type_once},
                                          {"stalled", stall_once},
                                          {"slow", slow_once},
                                          {"blocked", block_once}}};

} // namespace

std::span<const StormKind> storm_kinds() {
    return kinds;
}

} // namespace bench_test

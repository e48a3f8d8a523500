// Interrupts runs of the legacy WLAN test at random moments: while they compute, wait, are in a
// request or have a child. Each run must end within a second with exit status 0 and leave a
// complete result file that says what the console had shown.
//
//     interrupt_storm --count 1000 --seed 1 --jobs 12
//
// The moments depend on the seed alone. Prints a summary line; the exit status is 0 when every run
// ended well.

#include "bench_run.hpp"
#include "expected.hpp"

#include <getopt.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <mutex>
#include <random>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace bench_test {
namespace {

constexpr double limit_ms = 1000;
constexpr int earliest_ms = 30;

struct Settings {
    int count = 100;
    unsigned seed = 1;
    int jobs = 8;
};

/// A kind of run, and the span of it in which the interrupt falls.
struct Life {
    const char* name;
    const char* scenario;
    const char* lines;
    bool debug;
    int latest_ms;
    int weight;
};

constexpr const char* quick_address = "program udhcpc runs \"exit 0\"\n"
                                      "program killall runs \"exit 0\"";

constexpr std::array<Life, 11> lives{{
    {"pass, real DHCP client", "", "", false, 6500, 4},
    {"pass, real iperf", "pass", "", false, 9000, 1},
    {"pass after pass", "", quick_address, false, 9000, 4},
    {"a long iperf", "",
     "config check_iperf=yes\nprogram iperf runs \"exec sleep 3\"\n"
     "program udhcpc runs \"sleep 1\"\nprogram killall runs \"exit 0\"",
     false, 8000, 4},
    {"DHCP server absent", "dhcp-server-absent", "", false, 8000, 3},
    {"DHCP client never found", "",
     "program udhcpc runs \"exit 0\"\nprogram killall runs \"exit 1\"", false, 3000, 3},
    {"failure after failure", "scan-refused", "module none", false, 9000, 4},
    {"no connection", "connection-never-comes", "", false, 5000, 3},
    {"endless events on the console", "endless-event-flood", "", true, 4000, 3},
    {"forever busy", "scan-busy-forever", "", false, 3000, 3},
    {"no answer", "supplicant-never-answers", "", false, 5000, 3},
}};

enum class Verdict { good, before_the_handler, bad };

struct Outcome {
    Verdict verdict = Verdict::bad;
    double reaction_ms = 0;
    std::string problem;
};

// ---- what the console says of the result file --------------------------------------------------

int times(std::string_view text, std::string_view part) {
    int count = 0;
    for (auto at = text.find(part); at != std::string_view::npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

bool contains(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

/// The console of each iteration, the last one perhaps cut short.
std::vector<std::string_view> iterations_of(std::string_view console) {
    std::vector<std::string_view> iterations;
    const std::array<std::string_view, 2> beginnings{"\n\n[WIFI]Chip type is",
                                                     "\n\n[WIFI]ERROR:Module not inserted"};
    std::vector<std::size_t> starts;
    for (const auto beginning : beginnings) {
        for (auto at = console.find(beginning); at != std::string_view::npos;
             at = console.find(beginning, at + 1)) {
            starts.push_back(at);
        }
    }
    std::sort(starts.begin(), starts.end());
    starts.push_back(console.size());
    for (std::size_t index = 0; index + 1 < starts.size(); ++index) {
        iterations.push_back(console.substr(starts[index], starts[index + 1] - starts[index]));
    }
    return iterations;
}

/// Records that the legacy WLAN test leaves for an iteration that has come to its end.
int failures_of(std::string_view iteration) {
    if (contains(iteration, "[WIFI]Unable to open sockets!!\n") ||
        contains(iteration, "[WIFI]Unable to attach event socket!!\n")) {
        return 2; // this code is filed twice
    }
    const bool failed = contains(iteration, "Fail to send Scan Command!!!\n") ||
                        contains(iteration, "Fail to send Scan_Results Command!!!\n") ||
                        contains(iteration, "ERROR:ADD_NETWORK COMMAND FAILED\n") ||
                        contains(iteration, "ERROR:SET_NETWORK COMMAND FAILED\n") ||
                        contains(iteration, "ERROR:SELECT_NETWORK COMMAND FAILED\n");
    return failed ? 1 : 0;
}

std::string line_for(int test_case, int failures) {
    const std::string begin = "Test case " + std::to_string(test_case) + " ";
    return begin + (failures == 0 ? "passed \n" : "fail # " + std::to_string(failures) + "\n");
}

/// The result files that go with this console. The last iteration can have shown a failure that it
/// had not filed yet, because its session was still to be closed.
std::vector<std::string> possible_result_files(std::string_view console) {
    const auto iterations = iterations_of(console);
    const int module = times(console, "[WIFI]ERROR:Module not inserted");
    const int driver = times(console, "[WIFI]ERROR:WiFi driver is not insmoded properly") +
                       times(console, "[WIFI]ERROR:WiFi network interface not up");
    int legacy = 0;
    for (std::size_t index = 0; index + 1 < iterations.size(); ++index) {
        legacy += failures_of(iterations[index]);
    }
    const std::string checks_lines = line_for(1, module) + line_for(2, driver);
    std::vector<std::string> files;
    const bool last_is_closed = !iterations.empty() && iterations.back().ends_with(closed);
    if (!last_is_closed) {
        files.push_back(checks_lines + line_for(8, legacy));
    }
    if (!iterations.empty()) {
        files.push_back(checks_lines + line_for(8, legacy + failures_of(iterations.back())));
    }
    return files;
}

// ---- one run -----------------------------------------------------------------------------------

Outcome bad(const std::string& problem) {
    return {Verdict::bad, 0, problem};
}

// A child that the interrupt did not reach, such as iperf, may print a last line of its own behind
// those of the tool.
bool tool_ends_with_done(const std::string& out) {
    const auto end = out.rfind(done);
    return end != std::string::npos && !contains(out.substr(end + done.size()), "[WIFI]");
}

Outcome judge(const BenchRun& run, int moment_ms) {
    if (run.timed_out) {
        return bad("did not end");
    }
    if (run.status == 130 && !contains(run.out, "[WIFI]USBFS")) {
        return {Verdict::before_the_handler, 0, ""};
    }
    if (run.status != 0) {
        return bad("exit status " + std::to_string(run.status));
    }
    const double reaction_ms = run.wall_ms - moment_ms;
    if (reaction_ms > limit_ms) {
        return bad("took " + std::to_string(reaction_ms) + " ms");
    }
    const auto end = run.out.find(interrupted);
    if (end == std::string::npos || !tool_ends_with_done(run.out) ||
        times(run.out, "Got ^C") != 1) {
        return bad("its console does not end as it should:\n" + run.out);
    }
    const auto written = run.result_file();
    if (!written) {
        return bad("no result file");
    }
    const auto possible = possible_result_files(std::string_view(run.out).substr(0, end));
    if (std::find(possible.begin(), possible.end(), *written) == possible.end()) {
        return bad("the result file\n" + *written + "does not go with the console\n" + run.out);
    }
    if (!run.sockets().empty()) {
        return bad("a client socket was left");
    }
    return {Verdict::good, reaction_ms, ""};
}

const Life& choose_life(std::mt19937& random) {
    std::vector<double> weights;
    for (const Life& life : lives) {
        weights.push_back(life.weight);
    }
    return lives.at(static_cast<std::size_t>(
        std::discrete_distribution<int>(weights.begin(), weights.end())(random)));
}

struct Attempt {
    const Life* life = nullptr;
    int moment_ms = 0;
    Outcome outcome;
};

Attempt interrupt_once(std::mt19937& random) {
    Attempt attempt;
    attempt.life = &choose_life(random);
    attempt.moment_ms =
        std::uniform_int_distribution<int>(earliest_ms, attempt.life->latest_ms)(random);
    std::vector<std::string> arguments{"-w", "-m", "1000"};
    if (attempt.life->debug) {
        arguments.emplace_back("-u");
    }
    const BenchRun run = Bench(attempt.life->scenario)
                             .line(attempt.life->lines)
                             .signal("INT@" + std::to_string(attempt.moment_ms) + "ms")
                             .args(arguments)
                             .at_most(std::chrono::seconds(60))
                             .run();
    attempt.outcome = judge(run, attempt.moment_ms);
    return attempt;
}

// ---- all runs ----------------------------------------------------------------------------------

class Storm {
public:
    explicit Storm(const Settings& settings) : settings_(settings) {}

    int run() {
        {
            std::vector<std::jthread> workers;
            for (int job = 0; job < settings_.jobs; ++job) {
                workers.emplace_back([this] { work(); });
            }
        }
        return summarise();
    }

private:
    struct Reaction {
        double ms = 0;
        const char* life = "none";
        int moment_ms = 0;
    };

    void work() {
        for (int index = next_++; index < settings_.count; index = next_++) {
            std::seed_seq seeds{settings_.seed, static_cast<unsigned>(index)};
            std::mt19937 random(seeds);
            // One that comes before the handler is there meets the default action: another is
            // drawn.
            while (!note(index, interrupt_once(random))) {
            }
        }
    }

    /// False when the interrupt does not count.
    bool note(int index, const Attempt& attempt) {
        const std::lock_guard lock(mutex_);
        const char* const name = attempt.life->name;
        switch (attempt.outcome.verdict) {
        case Verdict::good:
            ++runs_[name];
            reactions_.push_back({attempt.outcome.reaction_ms, name, attempt.moment_ms});
            return true;
        case Verdict::before_the_handler:
            ++early_;
            return false;
        case Verdict::bad:
            ++runs_[name];
            ++bad_;
            std::printf("run %d (%s, interrupted at %d ms): %s\n", index, name, attempt.moment_ms,
                        attempt.outcome.problem.c_str());
            return true;
        }
        return true;
    }

    int summarise() {
        for (const auto& [name, runs] : runs_) {
            std::printf("%5d  %s\n", runs, name.c_str());
        }
        std::sort(reactions_.begin(), reactions_.end(),
                  [](const Reaction& a, const Reaction& b) { return a.ms < b.ms; });
        const Reaction none{};
        const Reaction& median = reactions_.empty() ? none : reactions_[reactions_.size() / 2];
        const Reaction& slowest = reactions_.empty() ? none : reactions_.back();
        std::printf("%d interrupts, seed %u: %zu ended well, %d did not; end after %.1f ms at the "
                    "median, %.1f ms at most (%s, at %d ms); %d more met no handler yet\n",
                    settings_.count, settings_.seed, reactions_.size(), bad_, median.ms, slowest.ms,
                    slowest.life, slowest.moment_ms, early_);
        return bad_ == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
    }

    Settings settings_;
    std::atomic<int> next_ = 0;
    std::mutex mutex_;
    std::map<std::string, int> runs_;
    std::vector<Reaction> reactions_;
    int early_ = 0;
    int bad_ = 0;
};

bool parse(int argc, char* argv[], Settings& settings) {
    constexpr std::array<option, 4> options{{{"count", required_argument, nullptr, 'c'},
                                             {"seed", required_argument, nullptr, 's'},
                                             {"jobs", required_argument, nullptr, 'j'},
                                             {nullptr, 0, nullptr, 0}}};
    for (int letter = getopt_long(argc, argv, "", options.data(), nullptr); letter != -1;
         letter = getopt_long(argc, argv, "", options.data(), nullptr)) {
        const int value = letter == '?' ? 0 : std::atoi(optarg);
        switch (letter) {
        case 'c':
            settings.count = value;
            break;
        case 's':
            settings.seed = static_cast<unsigned>(value);
            break;
        case 'j':
            settings.jobs = value;
            break;
        default:
            return false;
        }
    }
    return settings.count > 0 && settings.jobs > 0;
}

} // namespace
} // namespace bench_test

int main(int argc, char* argv[]) {
    bench_test::Settings settings;
    if (!bench_test::parse(argc, argv, settings)) {
        std::fprintf(stderr, "usage: interrupt_storm [--count N] [--seed S] [--jobs J]\n");
        return EXIT_FAILURE;
    }
    return bench_test::Storm(settings).run();
}

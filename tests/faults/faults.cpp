// SPDX-License-Identifier: Apache-2.0
// Every system call of the unchanged tool fails once, in every mode, with each error that the call
// can give. The tool runs on the bench; its calls behind the banner are learned from a run in which
// nothing fails.
//
//     faults                                     all modes, all calls
//     faults --mode w --mode S-first             these modes
//     faults --count 300 --seed 1                a choice of it
//     faults --mode w --only openat:12:error=EMFILE     one, with its console
//
// A run is bad when it crashes, hangs, loses its results without a word, or passes what did not
// happen. Prints the bad ones and a table; the exit status is 0 when none was bad.

#include "fault_modes.hpp"
#include "fault_plan.hpp"
#include "fault_verdict.hpp"
#include "long_options.hpp"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace faults {
namespace {

/// A call can come at another place in a run that waits a little longer; then it is tried again.
constexpr int attempts = 3;

constexpr std::size_t faults_to_a_progress_line = 500;

/// More faults than this, in a hundred, must not remain untried.
constexpr std::size_t untried_allowed = 3;

struct Settings {
    std::vector<const Mode*> modes;
    std::size_t count = 0;
    unsigned seed = 1;
    int jobs = 8;
    std::string only;
    bool listing = false;
};

/// A mode, with what its run is when nothing fails.
struct Learned {
    bench_test::BenchRun whole;
    std::vector<Fault> faults;
};

using LearnedModes = std::map<const Mode*, Learned>;

bool learn(const Mode& mode, Learned& learned) {
    const bench_test::BenchRun traced = run_traced(mode, "-k -y");
    learned.whole = run_traced(mode, "-e trace=none");
    const auto log = traced.files.find("calls");
    const bool ran = !traced.timed_out && !learned.whole.timed_out && traced.status == 0 &&
                     learned.whole.status == 0 && log != traced.files.end();
    if (!ran || traced.result_file() != learned.whole.result_file()) {
        std::fprintf(stderr, "%s does not run well by itself:\n%s\n%s\n", mode.name,
                     traced.out.c_str(), learned.whole.out.c_str());
        return false;
    }
    learned.faults = all_faults(mode, calls_after_the_banner(read_call_log(log->second)));
    if (learned.faults.empty()) {
        std::fprintf(stderr, "%s: no calls were learned\n", mode.name);
    }
    return !learned.faults.empty();
}

std::string short_name(const Fault& fault) {
    return fault.call.name + ":" + std::to_string(fault.call.nth) + ":" + fault.failure;
}

struct Tally {
    int tried = 0;
    int untried = 0;
    std::map<Outcome, int> bad;
};

class Sweep {
public:
    Sweep(const LearnedModes& learned, std::vector<Fault> faults, bool verbose)
        : learned_(learned), faults_(std::move(faults)), verbose_(verbose) {}

    int run(int jobs) {
        {
            std::vector<std::jthread> workers;
            workers.reserve(static_cast<std::size_t>(jobs));
            for (int job = 0; job < jobs; ++job) {
                workers.emplace_back([this] { work(); });
            }
        }
        return summarise();
    }

private:
    void work() {
        for (std::size_t index = next_++; index < faults_.size(); index = next_++) {
            const Fault& fault = faults_[index];
            bench_test::BenchRun run;
            FaultVerdict verdict;
            for (int attempt = 0; attempt < attempts && verdict.outcome == Outcome::not_tried;
                 ++attempt) {
                run = run_traced(*fault.mode, tracer_options(fault));
                verdict = judge(fault, learned_.at(fault.mode).whole, run);
            }
            note(fault, verdict, run);
            if ((index + 1) % faults_to_a_progress_line == 0) {
                std::fprintf(stderr, "%zu of %zu\n", index + 1, faults_.size());
            }
        }
    }

    void note(const Fault& fault, const FaultVerdict& verdict, const bench_test::BenchRun& run) {
        const std::lock_guard lock(mutex_);
        Tally& tally = tallies_[fault.mode];
        if (verdict.outcome == Outcome::not_tried) {
            ++tally.untried;
        } else {
            ++tally.tried;
        }
        const bool is_bad =
            verdict.outcome != Outcome::good && verdict.outcome != Outcome::not_tried;
        if (is_bad) {
            ++tally.bad[verdict.outcome];
        }
        if (is_bad || verbose_) {
            std::printf("%s: %s\n  %s\n  repeat with --mode %s --only %s\n",
                        is_bad ? "BAD" : name_of(verdict.outcome), description(fault).c_str(),
                        (std::string(name_of(verdict.outcome)) + ": " + verdict.problem).c_str(),
                        fault.mode->name, short_name(fault).c_str());
            std::fflush(stdout);
        }
        if (verbose_) {
            std::printf("---- console ----\n%s---- result file ----\n%s\n", run.out.c_str(),
                        run.result_file().value_or("none\n").c_str());
        }
    }

    int summarise() const {
        Tally all;
        std::printf("\n| mode | faults | crash | hang | lost | false | not tried |\n"
                    "|---|---|---|---|---|---|---|\n");
        for (const Mode& mode : modes()) {
            const auto found = tallies_.find(&mode);
            if (found != tallies_.end()) {
                print_row(mode.name, found->second);
                add(all, found->second);
            }
        }
        print_row("all", all);
        const std::size_t untried = static_cast<std::size_t>(all.untried) * 100;
        const bool tried_enough = all.tried > 0 && untried <= untried_allowed * faults_.size();
        return all.bad.empty() && tried_enough ? EXIT_SUCCESS : EXIT_FAILURE;
    }

    static void add(Tally& all, const Tally& one) {
        all.tried += one.tried;
        all.untried += one.untried;
        for (const auto& [outcome, count] : one.bad) {
            all.bad[outcome] += count;
        }
    }

    static void print_row(const char* name, const Tally& tally) {
        const auto bad = [&tally](Outcome outcome) {
            const auto found = tally.bad.find(outcome);
            return found == tally.bad.end() ? 0 : found->second;
        };
        std::printf("| %s | %d | %d | %d | %d | %d | %d |\n", name, tally.tried,
                    bad(Outcome::crash), bad(Outcome::hang), bad(Outcome::lost_verdict),
                    bad(Outcome::false_verdict), tally.untried);
    }

    const LearnedModes& learned_;
    const std::vector<Fault> faults_;
    const bool verbose_;
    std::atomic<std::size_t> next_ = 0;
    std::mutex mutex_;
    std::map<const Mode*, Tally> tallies_;
};

bool learn_all(const Settings& settings, LearnedModes& learned) {
    std::atomic<std::size_t> next = 0;
    std::atomic<bool> well = true;
    for (const Mode* const mode : settings.modes) {
        learned[mode];
    }
    {
        std::vector<std::jthread> workers;
        for (int job = 0; job < std::min(settings.jobs, 4); ++job) {
            workers.emplace_back([&] {
                for (std::size_t index = next++; index < settings.modes.size(); index = next++) {
                    const Mode* const mode = settings.modes[index];
                    well = learn(*mode, learned.at(mode)) && well;
                }
            });
        }
    }
    return well;
}

int run(const Settings& settings) {
    LearnedModes learned;
    if (!learn_all(settings, learned)) {
        return EXIT_FAILURE;
    }
    std::vector<Fault> faults;
    for (const Mode* const mode : settings.modes) {
        const auto& of_mode = learned.at(mode).faults;
        faults.insert(faults.end(), of_mode.begin(), of_mode.end());
    }
    if (!settings.only.empty()) {
        std::erase_if(faults,
                      [&](const Fault& fault) { return short_name(fault) != settings.only; });
    }
    faults = choose(std::move(faults), settings.count, settings.seed);
    if (settings.listing) {
        for (const Fault& fault : faults) {
            std::printf("%s\n", description(fault).c_str());
        }
        return EXIT_SUCCESS;
    }
    return Sweep(learned, std::move(faults), !settings.only.empty()).run(settings.jobs);
}

bool parse(int argc, char* argv[], Settings& settings) {
    using namespace test_tools;
    const auto add_mode = [&settings](const char* name) {
        settings.modes.push_back(find_mode(name));
        return settings.modes.back() != nullptr;
    };
    const bool understood = read_options(argc, argv,
                                         {{"mode", true, add_mode},
                                          number("count", settings.count),
                                          number("seed", settings.seed, 0),
                                          number("jobs", settings.jobs),
                                          text("only", settings.only),
                                          flag("list", settings.listing)});
    if (settings.modes.empty()) {
        for (const Mode& mode : modes()) {
            settings.modes.push_back(&mode);
        }
    }
    return understood;
}

void print_usage() {
    std::fprintf(stderr,
                 "usage: faults [--mode MODE]... [--count N] [--seed S] [--jobs J] [--list]\n"
                 "              [--only CALL:NTH:FAILURE]\nmodes:");
    for (const Mode& mode : modes()) {
        std::fprintf(stderr, " %s", mode.name);
    }
    std::fprintf(stderr, "\n");
}

} // namespace
} // namespace faults

int main(int argc, char* argv[]) {
    faults::Settings settings;
    if (!faults::parse(argc, argv, settings)) {
        faults::print_usage();
        return EXIT_FAILURE;
    }
    return faults::run(settings);
}

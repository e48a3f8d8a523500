// SPDX-License-Identifier: Apache-2.0
// Interrupts runs of all modes at random moments: while they compute, wait, are in a request, in
// the driver or have a child; with a console that stalls or is slow, with files that never open,
// by a signal or by ^C at a terminal. Each run must end soon, leave no socket, and an interrupted
// one a complete result file that says what the console had shown.
//
//     interrupt_storm --count 1000 --seed 1 --jobs 12
//     interrupt_storm --kind typed --count 1000
//     interrupt_storm --seed 1 --only 417
//
// What is drawn depends on the seed alone; --only repeats one run and shows its console. The time
// to the end counts from the moment at which the signal was really sent, however late a loaded
// machine came to it. Prints a summary; the exit status is 0 when every run ended well.

#include "long_options.hpp"
#include "storm_kinds.hpp"

#include <algorithm>
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

struct Settings {
    const StormKind* kind = &storm_kinds().front();
    int count = 100;
    unsigned seed = 1;
    int jobs = 8;
    int only = -1;
};

const StormKind* find_kind(std::string_view name) {
    const auto kinds = storm_kinds();
    const auto found = std::find_if(kinds.begin(), kinds.end(),
                                    [name](const StormKind& kind) { return kind.name == name; });
    return found == kinds.end() ? nullptr : &*found;
}

class Storm {
public:
    explicit Storm(const Settings& settings) : settings_(settings) {}

    int run() {
        {
            std::vector<std::jthread> workers;
            workers.reserve(static_cast<std::size_t>(settings_.jobs));
            for (int job = 0; job < settings_.jobs; ++job) {
                workers.emplace_back([this] { work(); });
            }
        }
        return summarise();
    }

private:
    struct Timing {
        double ms = 0;
        std::string description = "none";
    };

    void work() {
        for (int index = next_++; index < settings_.count; index = next_++) {
            if (settings_.only < 0 || settings_.only == index) {
                storm_once(index);
            }
        }
    }

    // A signal that comes before the handler is there meets the default action, and a run can have
    // come to its own end: another is drawn.
    Attempt draw(int index) {
        std::seed_seq seeds{settings_.seed, static_cast<unsigned>(index)};
        std::mt19937 random(seeds);
        Attempt attempt = settings_.kind->attempt(index, random);
        while (!counts(attempt)) {
            attempt = settings_.kind->attempt(index, random);
        }
        return attempt;
    }

    // A machine at work delays some runs: one that ended late is bad when it does so again.
    void storm_once(int index) {
        Attempt attempt = draw(index);
        if (attempt.judgement.verdict == Verdict::late) {
            attempt = draw(index);
        }
        note(index, attempt);
        if (settings_.only == index) {
            std::printf("%s\n%s", attempt.description.c_str(), attempt.run.out.c_str());
        }
    }

    /// Whether the interrupt counts.
    bool counts(const Attempt& attempt) {
        const std::lock_guard lock(mutex_);
        const Verdict verdict = attempt.judgement.verdict;
        ++verdicts_[verdict];
        return verdict != Verdict::before_the_handler && verdict != Verdict::after_the_end;
    }

    void note(int index, const Attempt& attempt) {
        const std::lock_guard lock(mutex_);
        ++runs_[attempt.life];
        if (attempt.judgement.verdict == Verdict::good) {
            timings_.push_back({attempt.judgement.reaction_ms,
                                "run " + std::to_string(index) + ", " + attempt.description});
            return;
        }
        ++bad_;
        std::printf("BAD, repeat with --kind %s --seed %u --only %d: %s: %s\n",
                    settings_.kind->name, settings_.seed, index, attempt.description.c_str(),
                    attempt.judgement.problem.c_str());
        std::fflush(stdout);
    }

    int summarise() {
        for (const auto& [name, runs] : runs_) {
            std::printf("%5d  %s\n", runs, name.c_str());
        }
        std::sort(timings_.begin(), timings_.end(),
                  [](const Timing& a, const Timing& b) { return a.ms < b.ms; });
        const std::size_t count = timings_.size();
        const Timing none{};
        const Timing& median = count == 0 ? none : timings_[count / 2];
        const Timing& late = count == 0 ? none : timings_[count * 99 / 100];
        const Timing& slowest = count == 0 ? none : timings_.back();
        std::printf("%s, seed %u: %zu interrupted runs ended well, %d did not (%d wedged, %d lost "
                    "something), %d ended late; end after %.1f ms at the median, %.1f ms at the "
                    "99th percentile, %.1f ms at most (%s); %d more met no handler yet, %d had "
                    "ended before\n",
                    settings_.kind->name, settings_.seed, count, bad_, verdicts_[Verdict::wedged],
                    verdicts_[Verdict::lost], verdicts_[Verdict::late], median.ms, late.ms,
                    slowest.ms, slowest.description.c_str(), verdicts_[Verdict::before_the_handler],
                    verdicts_[Verdict::after_the_end]);
        return bad_ == 0 && count > 0 ? EXIT_SUCCESS : EXIT_FAILURE;
    }

    Settings settings_;
    std::atomic<int> next_ = 0;
    std::mutex mutex_;
    std::map<std::string, int> runs_;
    std::map<Verdict, int> verdicts_;
    std::vector<Timing> timings_;
    int bad_ = 0;
};

bool parse(int argc, char* argv[], Settings& settings) {
    using namespace test_tools;
    const auto choose_kind = [&settings](const char* name) {
        settings.kind = find_kind(name);
        return settings.kind != nullptr;
    };
    const bool understood = read_options(argc, argv,
                                         {{"kind", true, choose_kind},
                                          number("count", settings.count),
                                          number("seed", settings.seed, 0),
                                          number("jobs", settings.jobs),
                                          number("only", settings.only, 0)});
    settings.count = std::max(settings.count, settings.only + 1);
    return understood;
}

} // namespace
} // namespace bench_test

int main(int argc, char* argv[]) {
    bench_test::Settings settings;
    if (!bench_test::parse(argc, argv, settings)) {
        std::fprintf(
            stderr,
            "usage: interrupt_storm [--kind signals|typed|stalled|slow|blocked] [--count N]\n"
            "                       [--seed S] [--jobs J] [--only I]\n");
        return EXIT_FAILURE;
    }
    return bench_test::Storm(settings).run();
}

// SPDX-License-Identifier: Apache-2.0
// Every system call of wivex-doctor fails once, with each error that it can give, in good worlds
// and in worlds with one fault. It must end in time, with a status that it has, and must never call
// a world ready that is not.
//
//     doctor_faults [--count N [--seed S]] [--jobs J] [--list]

#include "bench_run.hpp"
#include "call_log.hpp"
#include "fault_plan.hpp"

#include <getopt.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace {

using faults::Fault;
using faults::Mode;

constexpr int attempts = 3;

// The ending of a mode says whether the world is ready: regular, or not.
constexpr auto ready = faults::Ending::regular;
constexpr auto not_ready = faults::Ending::console_only;

constexpr std::array<Mode, 15> worlds{{
    {"w", "-w", "", "", "", ready},
    {"d-json", "-d --json", "", "", "", ready},
    {"w-traffic", "-w", "", "config check_iperf=yes", "", ready},
    {"w-scan", "-w --scan", "", "", "", ready},
    {"S", "-S", "", "air takes 20ms", "", ready},
    {"w-no-supplicant", "-w", "", "supplicant absent", "", not_ready},
    {"w-no-module", "-w", "", "module none", "", not_ready},
    {"w-no-client", "-w", "", "program udhcpc missing", "", not_ready},
    {"w-unknown-key", "-w", "", "config go_sid=x", "", not_ready},
    {"w-no-folder", "-w -R/none/result", "", "", "", not_ready},
    {"w-not-heard", "-w --scan", "access-point-absent", "", "", not_ready},
    {"d-no-settings", "-d", "", "config dhcpd_conf=/none", "", not_ready},
    {"S-no-nl80211", "-S", "scan-without-nl80211", "", "", not_ready},
    {"l-no-request", "-l", "loopback/combo-unknown", "", "", not_ready},
    {"M-no-device", "-M", "mac/combo-no-device", "", "", not_ready},
}};

bench_test::BenchRun run_world(const Mode& world, const std::string& tracer_options) {
    bench_test::Bench bench(world.scenario);
    bench.line(world.lines).streams_together();
    bench.option("--tool", DOCTOR_PROGRAM).at_most(std::chrono::seconds(60));
    bench.option("--under", std::string(TRACER) + " " + tracer_options + " --");
    return bench.args(faults::arguments_of(world)).run();
}

// What the loader does is not the doctor's.
std::vector<faults::Call> calls_of_doctor(const std::string& log) {
    std::vector<faults::Call> calls = faults::read_call_log(log);
    const auto first = std::find_if(calls.begin(), calls.end(), [](const faults::Call& call) {
        return call.arguments.find("wivex.cfg") != std::string::npos;
    });
    calls.erase(calls.begin(), first);
    std::erase_if(calls, [](const faults::Call& call) { return !call.of_the_tool; });
    return calls;
}

bool learn(const Mode& world, std::vector<Fault>& found) {
    const bench_test::BenchRun run = run_world(world, "-k -y");
    const auto log = run.files.find("calls");
    if (run.status != (world.ending == ready ? 0 : 1) || log == run.files.end()) {
        std::fprintf(stderr, "%s is not as it should be by itself (%d):\n%s\n", world.name,
                     run.status, run.out.c_str());
        return false;
    }
    const std::vector<Fault> faults = faults::all_faults(world, calls_of_doctor(log->second));
    found.insert(found.end(), faults.begin(), faults.end());
    return !faults.empty();
}

// Empty when the run ended as it may.
std::string problem_of(const Fault& fault, const bench_test::BenchRun& run) {
    if (run.timed_out) {
        return "it did not end";
    }
    if (run.status != 0 && run.status != 1) {
        return "it ended with " + std::to_string(run.status);
    }
    if (run.status == 0 && fault.mode->ending != ready) {
        return "it called this world ready";
    }
    return {};
}

struct Settings {
    std::size_t count = 0;
    unsigned seed = 1;
    int jobs = 8;
    bool listing = false;
};

class Sweep {
public:
    explicit Sweep(std::vector<Fault> faults) : faults_(std::move(faults)) {}

    int run(int jobs) {
        {
            std::vector<std::jthread> workers;
            workers.reserve(static_cast<std::size_t>(jobs));
            for (int job = 0; job < jobs; ++job) {
                workers.emplace_back([this] { work(); });
            }
        }
        std::printf("%zu faults, %d bad, %d not tried\n", faults_.size(), bad_, untried_);
        const bool tried = static_cast<std::size_t>(untried_) * 20 <= faults_.size();
        return bad_ == 0 && tried && !faults_.empty() ? EXIT_SUCCESS : EXIT_FAILURE;
    }

private:
    void work() {
        for (std::size_t index = next_++; index < faults_.size(); index = next_++) {
            const Fault& fault = faults_[index];
            bench_test::BenchRun run;
            bool tried = false;
            for (int attempt = 0; attempt < attempts && !tried; ++attempt) {
                run = run_world(*fault.mode, faults::tracer_options(fault));
                const auto log = run.files.find("calls");
                tried = log != run.files.end() && faults::call_that_failed(log->second).has_value();
            }
            note(fault, run, tried);
        }
    }

    void note(const Fault& fault, const bench_test::BenchRun& run, bool tried) {
        const std::lock_guard lock(mutex_);
        if (!tried) {
            ++untried_;
            return;
        }
        const std::string problem = problem_of(fault, run);
        if (!problem.empty()) {
            ++bad_;
            std::printf("BAD: %s\n  %s\n%s\n", faults::description(fault).c_str(), problem.c_str(),
                        run.out.c_str());
        }
    }

    const std::vector<Fault> faults_;
    std::atomic<std::size_t> next_ = 0;
    std::mutex mutex_;
    int bad_ = 0;
    int untried_ = 0;
};

bool parse(int argc, char* argv[], Settings& settings) {
    constexpr std::array<option, 5> options{{{"count", required_argument, nullptr, 'c'},
                                             {"seed", required_argument, nullptr, 's'},
                                             {"jobs", required_argument, nullptr, 'j'},
                                             {"list", no_argument, nullptr, 'l'},
                                             {nullptr, 0, nullptr, 0}}};
    for (int letter = getopt_long(argc, argv, "", options.data(), nullptr); letter != -1;
         letter = getopt_long(argc, argv, "", options.data(), nullptr)) {
        switch (letter) {
        case 'c':
            settings.count = static_cast<std::size_t>(std::atoi(optarg));
            break;
        case 's':
            settings.seed = static_cast<unsigned>(std::atoi(optarg));
            break;
        case 'j':
            settings.jobs = std::max(1, std::atoi(optarg));
            break;
        case 'l':
            settings.listing = true;
            break;
        default:
            return false;
        }
    }
    return optind == argc;
}

} // namespace

int main(int argc, char* argv[]) {
    Settings settings;
    if (!parse(argc, argv, settings)) {
        std::fprintf(stderr, "usage: doctor_faults [--count N [--seed S]] [--jobs J] [--list]\n");
        return 2;
    }
    std::vector<Fault> found;
    for (const Mode& world : worlds) {
        if (!learn(world, found)) {
            return EXIT_FAILURE;
        }
    }
    found = faults::choose(std::move(found), settings.count, settings.seed);
    if (settings.listing) {
        for (const Fault& fault : found) {
            std::printf("%s\n", faults::description(fault).c_str());
        }
        return EXIT_SUCCESS;
    }
    return Sweep(std::move(found)).run(settings.jobs);
}

// SPDX-License-Identifier: Apache-2.0
// Lets runs of many iterations go on and watches what the tool costs meanwhile: resident memory,
// descriptors, processor time.
//
//     endurance --count 20000 --modes wcdS --speed 300
//
// Each mode runs under a limit of 1024 descriptors, with the clock `speed` times as fast. Every
// `step` iterations a line is printed:
//
//     MODE ITERATION MEMORY_KB DESCRIPTORS TOOL_MS CHILDREN_MS SECONDS
//
// the processor times being those of the last `step` iterations; lines that begin with # are for
// people. The exit status is 0 when every iteration passed and the first and the last `step`
// iterations cost the same; with --trial, when every iteration passed.

#include "bench_run.hpp"
#include "language/files.hpp"
#include "long_options.hpp"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace bench_test {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

/// How far the last iterations may lie above the first and still cost the same. The results keep
/// the number of every iteration, 4 bytes in a list that doubles; the smallest block that could be
/// lost in each iteration has 32.
constexpr double memory_of_iteration_bytes = 16;
constexpr double processor_tolerance = 0.25;
constexpr int descriptor_tolerance = 1;

struct Settings {
    int count = 20000;
    int step = 1000;
    int speed = 300;
    std::string modes = "wcdS";
    bool trial = false;
};

struct Sample {
    int iteration = 0;
    long memory_kb = 0;
    /// The most that were seen open since the sample before.
    int descriptors = 0;
    /// Processor time since the start, of the tool and of the children that it waited for.
    double tool_ms = 0;
    double children_ms = 0;
    double seconds = 0;
};

// ---- looking at the tool from outside ----------------------------------------------------------

/// The fields of /proc/PID/stat behind the name, from the third on.
std::vector<std::string> fields_of(pid_t pid) {
    const std::string text =
        bench::read_file("/proc/" + std::to_string(pid) + "/stat").value_or("");
    const std::size_t name_end = text.rfind(')');
    if (name_end == std::string::npos) {
        return {};
    }
    std::istringstream stream(text.substr(name_end + 1));
    std::vector<std::string> fields;
    for (std::string field; stream >> field;) {
        fields.push_back(field);
    }
    return fields;
}

bool descends_from(pid_t pid, pid_t ancestor) {
    while (pid > 1 && pid != ancestor) {
        const auto fields = fields_of(pid);
        pid = fields.size() > 1 ? std::atoi(fields[1].c_str()) : 0;
    }
    return pid == ancestor;
}

/// The tool in the world of `launcher`; it must not have children yet.
std::optional<pid_t> find_tool(pid_t launcher) {
    std::error_code gone;
    for (const auto& entry : fs::directory_iterator("/proc", gone)) {
        const pid_t pid = std::atoi(entry.path().filename().c_str());
        if (pid > 0 && bench::read_file(entry.path() / "comm") == "wivex\n" &&
            descends_from(pid, launcher)) {
            return pid;
        }
    }
    return std::nullopt;
}

int count_descriptors(pid_t pid) {
    std::error_code gone;
    int count = 0;
    fs::directory_iterator entry("/proc/" + std::to_string(pid) + "/fd", gone);
    while (!gone && entry != fs::directory_iterator()) {
        ++count;
        entry.increment(gone);
    }
    return count;
}

long resident_kb(pid_t pid) {
    std::istringstream pages(
        bench::read_file("/proc/" + std::to_string(pid) + "/statm").value_or(""));
    long total = 0;
    long resident = 0;
    pages >> total >> resident;
    return resident * (sysconf(_SC_PAGESIZE) / 1024);
}

double ticks_ms(const std::vector<std::string>& fields, std::size_t first) {
    if (fields.size() < first + 2) {
        return 0;
    }
    const double ticks = std::atof(fields[first].c_str()) + std::atof(fields[first + 1].c_str());
    return ticks * 1000 / static_cast<double>(sysconf(_SC_CLK_TCK));
}

// ---- one mode ----------------------------------------------------------------------------------

class Watch {
public:
    Watch(char mode, const Settings& settings) : mode_(mode), settings_(settings) {}

    /// False when an iteration failed or, unless it is a trial, when the cost grew.
    bool run() {
        const auto started = bench_for_mode().start();
        started->close_input();
        const auto start = Clock::now();
        for (std::string text = started->next_out(); !text.empty(); text = started->next_out()) {
            if (!tool_) {
                tool_ = find_tool(started->launcher());
            }
            seconds_ = std::chrono::duration<double>(Clock::now() - start).count();
            follow(text);
        }
        tell_of_failure();
        const BenchRun ended = started->finish();
        return ended_well(ended) && (settings_.trial || stays_flat());
    }

private:
    Bench bench_for_mode() const {
        Bench bench(mode_ == 'S' ? "scan-listing" : "");
        return bench.streams_together()
            .line(quick_address)
            .option("--limit-files", "1024")
            .faster(settings_.speed)
            .args({std::string("-") + mode_, "-m", std::to_string(settings_.count)})
            .at_most(std::chrono::hours(24));
    }

    void follow(std::string_view text) {
        line_ += text;
        std::size_t begin = 0;
        for (auto end = line_.find('\n'); end != std::string::npos; end = line_.find('\n', begin)) {
            const auto line = std::string_view(line_).substr(begin, end + 1 - begin);
            if (line.starts_with("[WIFI]Chip type is = ")) {
                tell_of_failure();
                begin_iteration();
            }
            iteration_text_ += line;
            begin = end + 1;
        }
        line_.erase(0, begin);
    }

    // The console of an iteration that failed; what of it is filed stands in the result file.
    void tell_of_failure() {
        constexpr std::array<std::string_view, 5> failures{"FAIL", "Fail", "Unable", "unable",
                                                           "ERROR"};
        // A good iteration of -d says so, too: there is no group to remove.
        constexpr std::string_view harmless =
            "Failed to send P2P_GROUP_REMOVE command to wpa_supplicant\n";
        std::string text = iteration_text_;
        if (const auto at = text.find(harmless); at != std::string::npos) {
            text.erase(at, harmless.size());
        }
        if (std::any_of(failures.begin(), failures.end(), [&text](std::string_view failure) {
                return text.find(failure) != std::string::npos;
            })) {
            std::istringstream lines(iteration_text_);
            for (std::string line; std::getline(lines, line);) {
                std::printf("# %c %d| %s\n", mode_, iteration_, line.c_str());
            }
        }
        iteration_text_.clear();
    }

    void begin_iteration() {
        ++iteration_;
        constexpr int looks_in_a_step = 100;
        if (!tool_) {
            return;
        }
        if (iteration_ % std::max(1, settings_.step / looks_in_a_step) == 0) {
            descriptors_ = std::max(descriptors_, count_descriptors(*tool_));
        }
        if (iteration_ == 1 || iteration_ % settings_.step == 0) {
            take_sample();
        }
    }

    void take_sample() {
        constexpr std::size_t own_time = 11;
        constexpr std::size_t time_of_children = 13;
        const auto fields = fields_of(*tool_);
        Sample sample;
        sample.iteration = iteration_;
        sample.memory_kb = resident_kb(*tool_);
        sample.descriptors = std::exchange(descriptors_, 0);
        sample.tool_ms = ticks_ms(fields, own_time);
        sample.children_ms = ticks_ms(fields, time_of_children);
        sample.seconds = seconds_;
        if (!samples_.empty()) {
            const Sample& last = samples_.back();
            std::printf("%c %d %ld %d %.0f %.0f %.1f\n", mode_, sample.iteration, sample.memory_kb,
                        sample.descriptors, sample.tool_ms - last.tool_ms,
                        sample.children_ms - last.children_ms, sample.seconds);
            std::fflush(stdout);
        }
        samples_.push_back(sample);
    }

    bool ended_well(const BenchRun& run) const {
        const std::string results = run.result_file().value_or("no result file\n");
        std::printf("# -%c: %d iterations in %.0f s, exit status %d, %zu client sockets left\n",
                    mode_, iteration_, seconds_, run.status, run.sockets().size());
        std::istringstream lines(results);
        for (std::string line; std::getline(lines, line);) {
            std::printf("#     %s\n", line.c_str());
        }
        // The last status probe of the P2P client mode stays open by design.
        const std::size_t allowed_sockets = mode_ == 'c' ? 1 : 0;
        return run.status == 0 && iteration_ == settings_.count &&
               run.sockets().size() <= allowed_sockets && run.result_file() &&
               results.find("fail") == std::string::npos;
    }

    bool stays_flat() const {
        if (samples_.size() < 3) {
            std::printf("# -%c: too short to compare\n", mode_);
            return false;
        }
        const Sample& first = samples_[1];
        const Sample& last = samples_.back();
        const double first_ms = first.tool_ms - samples_[0].tool_ms;
        const double last_ms = last.tool_ms - samples_[samples_.size() - 2].tool_ms;
        const double kept_bytes = memory_of_iteration_bytes * (last.iteration - first.iteration);
        const bool flat =
            static_cast<double>(last.memory_kb - first.memory_kb) * 1024 <= kept_bytes &&
            last.descriptors <= first.descriptors + descriptor_tolerance &&
            last_ms <= first_ms * (1 + processor_tolerance);
        std::printf("# -%c: first %d and last %d iterations %s: %ld and %ld KB, %d and %d "
                    "descriptors, %.0f and %.0f ms\n",
                    mode_, settings_.step, settings_.step, flat ? "agree" : "DIFFER",
                    first.memory_kb, last.memory_kb, first.descriptors, last.descriptors, first_ms,
                    last_ms);
        std::fflush(stdout);
        return flat;
    }

    char mode_;
    const Settings& settings_;
    std::optional<pid_t> tool_;
    std::string line_;
    std::string iteration_text_;
    int iteration_ = 0;
    int descriptors_ = 0;
    double seconds_ = 0;
    std::vector<Sample> samples_;
};

bool parse(int argc, char* argv[], Settings& settings) {
    using namespace test_tools;
    const bool understood =
        read_options(argc, argv,
                     {number("count", settings.count), number("step", settings.step),
                      number("speed", settings.speed), text("modes", settings.modes),
                      flag("trial", settings.trial)});
    return understood && settings.modes.find_first_not_of("wcdS") == std::string::npos;
}

} // namespace
} // namespace bench_test

int main(int argc, char* argv[]) {
    bench_test::Settings settings;
    if (!bench_test::parse(argc, argv, settings)) {
        std::fprintf(stderr, "usage: endurance [--count N] [--step N] [--speed N] [--modes wcdS] "
                             "[--trial]\n");
        return EXIT_FAILURE;
    }
    bool good = true;
    for (const char mode : settings.modes) {
        good = bench_test::Watch(mode, settings).run() && good;
    }
    return good ? EXIT_SUCCESS : EXIT_FAILURE;
}

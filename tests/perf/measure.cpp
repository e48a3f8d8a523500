// SPDX-License-Identifier: Apache-2.0
#include "measure.hpp"

#include <sys/resource.h>
#include <time.h>

#include <algorithm>
#include <cstdio>

namespace perf {

namespace {

double seconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

} // namespace

double now() {
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

double processor_time() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

double quantile(std::vector<double> samples, double fraction) {
    std::sort(samples.begin(), samples.end());
    const auto last = static_cast<double>(samples.size() - 1);
    return samples.at(static_cast<std::size_t>(last * fraction));
}

void print_against_floor(const char* name, const char* unit, double figure, double floor,
                         double largest_ratio) {
    std::printf("%-34s %10.2f %-4s floor %10.2f  ratio %6.2f", name, figure, unit, floor,
                figure / floor);
    if (largest_ratio > 0) {
        std::printf("  (at most %.2f)", largest_ratio);
    }
    std::puts("");
}

void compare_with_floor(const char* name, const char* unit, int samples,
                        const std::function<double()>& figure, const std::function<double()>& floor,
                        double largest_ratio) {
    std::vector<double> figures;
    std::vector<double> floors;
    for (int sample = 0; sample < samples; ++sample) {
        figures.push_back(figure());
        floors.push_back(floor());
    }
    print_against_floor(name, unit, quantile(figures, 0.5), quantile(floors, 0.5), largest_ratio);
}

void print_figure(const char* name, const char* unit, double figure, double limit) {
    std::printf("%-34s %10.2f %-4s (at most %.2f)\n", name, figure, unit, limit);
}

} // namespace perf

// SPDX-License-Identifier: Apache-2.0
// Clocks, medians and the line that every measurement prints.
#pragma once

#include <cstddef>
#include <functional>
#include <vector>

namespace perf {

/// Monotonic time in seconds.
double now();

/// Microseconds that an action takes.
template <typename Action>
double microseconds_of(Action action) {
    const double start = now();
    action();
    return (now() - start) * 1e6;
}

/// Processor time of this process so far, user and system, in seconds.
double processor_time();

/// The value at `fraction` of the sorted samples; 0.5 is the median.
double quantile(std::vector<double> samples, double fraction);

/// Prints "name: figure unit, floor ..., ratio ... (at most ...)"; 0 stands for no limit.
void print_against_floor(const char* name, const char* unit, double figure, double floor,
                         double largest_ratio);

/// Takes so many samples of a figure and of its floor, in turn, and prints the two medians.
void compare_with_floor(const char* name, const char* unit, int samples,
                        const std::function<double()>& figure, const std::function<double()>& floor,
                        double largest_ratio);

/// Prints "name: figure unit (at most ...)".
void print_figure(const char* name, const char* unit, double figure, double limit);

} // namespace perf

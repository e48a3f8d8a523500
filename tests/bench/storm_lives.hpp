// SPDX-License-Identifier: Apache-2.0
// The kinds of runs that a storm interrupts: all modes, alone and mixed, passing and failing.
#pragma once

#include <random>
#include <span>
#include <string>
#include <vector>

namespace bench_test {

/// A kind of run, and the span of it in which the interrupt falls.
struct Life {
    const char* name;
    const char* arguments;
    const char* scenario;
    const char* lines;
    int latest_ms;
    int weight;
};

/// Draws one of the lives, each as often as its weight says.
const Life& choose_life(std::span<const Life> lives, std::mt19937& random);

std::span<const Life> lives_of_all_modes();

/// Lives that print without end.
std::span<const Life> flooding_lives();

/// The life's arguments, for so many iterations.
std::vector<std::string> arguments_of(const Life& life, int iterations = 1000);

} // namespace bench_test

// SPDX-License-Identifier: Apache-2.0
// Libraries that the world loads before the tool.
#pragma once

#include "options.hpp"

#include <string>
#include <vector>

namespace bench {

/// Where the n-th library of the options stands in the world.
std::string preload_in_world(std::size_t index);

/// The emulator's words that stand before the tool on the command line; it hands the libraries to
/// the tool. None without an emulator.
std::vector<std::string> emulator_words(const Options& options);

/// The emulator as a path of the machine, which the world must be given; empty when it has none, or
/// when it is found by its name.
std::string path_of_emulator(const Options& options);

/// Sets the environment of the tool: its libraries, unless an emulator hands them on, and the clock
/// that runs faster.
void set_preload_environment(const Options& options);

} // namespace bench

// SPDX-License-Identifier: Apache-2.0
// What the tool is started with: libraries that are loaded before it, an emulator, a faster clock.
#pragma once

#include <string>
#include <vector>

namespace bench {

struct ToolStart {
    /// Libraries that are loaded before the tool, as paths of the machine.
    std::vector<std::string> preloads;
    /// Program that starts the tool, with its options: an emulator. Empty when none does.
    std::string under;
    /// How much faster than the wall clock the tool's clock runs.
    int speed = 1;
};

/// Where the n-th of the libraries stands in the world.
std::string preload_in_world(std::size_t index);

/// The emulator's words that stand before the tool on the command line; it hands the libraries to
/// the tool. None without an emulator.
std::vector<std::string> emulator_words(const ToolStart& start);

/// The emulator as a path of the machine, which the world must be given; empty when it has none, or
/// when it is found by its name.
std::string path_of_emulator(const ToolStart& start);

/// Sets the environment of the tool: its libraries, unless an emulator hands them on, and the clock
/// that runs faster.
void set_preload_environment(const ToolStart& start);

} // namespace bench

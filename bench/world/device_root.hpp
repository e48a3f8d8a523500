// SPDX-License-Identifier: Apache-2.0
// The root folder of the device's world: the machine's programs, and private copies of everything
// that the tool reads or writes.
#pragma once

#include "language/scenario.hpp"
#include "world/configuration.hpp"

#include <string>
#include <vector>

namespace bench {

struct DeviceRoot {
    /// Configuration file, installed under each of its names.
    std::string configuration;
    /// The tool and the libraries that are loaded before it, as paths of the machine.
    std::string tool;
    std::vector<std::string> preloads;
    /// The program that starts the tool, as a path of the machine; empty for none, or for one that
    /// is found by its name.
    std::string under;
};

/// Where the program that starts the tool stands in the world, when it was named by its path.
inline constexpr const char* under_in_world = "/bench/under";

/// Where the tool stands in the world.
inline constexpr const char* tool_in_world = "/bench/wivex";

/// Builds the root folder and makes it this process's. To be called in new mount, process and
/// network namespaces. Returns false with a reason in `problem`.
bool enter_device_root(const DeviceRoot& device, const Scenario& scenario, std::string& problem);

/// The search path of the world's programs.
std::string search_path(const Scenario& scenario);

} // namespace bench

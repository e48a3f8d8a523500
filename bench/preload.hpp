// Libraries that the world loads before the tool.
#pragma once

#include "options.hpp"

#include <string>

namespace bench {

/// Where the n-th library of the options stands in the world.
std::string preload_in_world(std::size_t index);

/// Sets the environment of the tool: its libraries, and the clock that runs faster.
void set_preload_environment(const Options& options);

} // namespace bench

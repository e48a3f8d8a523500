// SPDX-License-Identifier: Apache-2.0
// The simulated chip: what it shows of itself in the device's world.
#pragma once

#include "language/chip_script.hpp"

#include <string>

namespace bench {

/// Puts the chip's files into the calling process's world and leaves a process behind that serves
/// them and writes the log at `log_path`. Returns false with a reason in `problem`.
bool start_chip(const ChipScript& script, const std::string& log_path, std::string& problem);

} // namespace bench

// SPDX-License-Identifier: Apache-2.0
// The loopback check (-l): the driver runs a bus loopback between host and chip.
//
// There is no common interface for it; each chip family has a flow and a file of its own.
#pragma once

#include "common/run_config.hpp"

namespace wivex {

/// Runs the loopback of the chip that the module check found. Returns 1 on a pass, 0 on a failure.
/// Leaves the process in the directory `driver_path`.
int loopback_test(const RunConfig& config);

} // namespace wivex

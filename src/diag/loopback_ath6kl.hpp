// SPDX-License-Identifier: Apache-2.0
// Bus loopback of the QCA 11n module, through the debugfs files of the ath6kl driver.
#pragma once

#include "common/run_config.hpp"

namespace wivex {

/// Runs the loopback and reads its error counters. Returns 1 on a pass, 0 on a failure. Tells
/// everything on standard error.
int loopback_ath6kl(const RunConfig& config);

} // namespace wivex

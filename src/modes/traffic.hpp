// SPDX-License-Identifier: Apache-2.0
// The traffic measurement that the client-side modes share.
#pragma once

#include "common/error_code.hpp"
#include "common/run_config.hpp"

namespace wivex {

/// Runs the iperf client unless `check_iperf` is "no" or empty (any other text runs it). Returns 0,
/// or 14 when the client could not be started.
ErrorCode measure_traffic(const RunConfig& config);

} // namespace wivex

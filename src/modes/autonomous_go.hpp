// SPDX-License-Identifier: Apache-2.0
// Autonomous GO mode (-g): starts a group of its own and serves peers by push button until the run
// is interrupted.
#pragma once

#include "common/error_code.hpp"
#include "common/run_config.hpp"

namespace wivex {

/// Serves until the session is lost. Returns 6, 10, 12, 13 or -1, never 0. Records nothing.
ErrorCode autonomous_go_test(RunConfig& config);

} // namespace wivex

// SPDX-License-Identifier: Apache-2.0
// P2P client mode (-c): joins the persistent group of the configured peer and leaves it again.
#pragma once

#include "common/error_code.hpp"
#include "common/run_config.hpp"

namespace wivex {

/// Runs one iteration. Returns 0 for a pass, else 6, 14, 16, 21, 26, 29, 32 or -1. Records nothing.
ErrorCode p2p_client_test(RunConfig& config);

} // namespace wivex

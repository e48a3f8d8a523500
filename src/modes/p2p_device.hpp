// SPDX-License-Identifier: Apache-2.0
// P2P device mode (-d): one group formed with the configured peer by GO negotiation, in whichever
// role the negotiation gives.
#pragma once

#include "common/error_code.hpp"
#include "common/run_config.hpp"

namespace wivex {

/// Runs one iteration. Returns 0 for a pass, else 6, 10, 12, 16, 21, 26, 29 or -1. Records nothing.
ErrorCode p2p_device_test(RunConfig& config);

} // namespace wivex

// SPDX-License-Identifier: Apache-2.0
// Legacy WLAN mode (-w): one association with an ordinary access point, from scan to disconnect.
#pragma once

#include "common/error_code.hpp"
#include "common/run_config.hpp"

namespace wivex {

/// Runs one iteration; takes the access point's security into `config`. Returns 0 for a pass, else
/// 6, 8, 9, 14, 19, 22 or 24. Records nothing.
ErrorCode legacy_wlan_test(RunConfig& config);

} // namespace wivex

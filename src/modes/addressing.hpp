// SPDX-License-Identifier: Apache-2.0
// How the modes give the interface its address, in either role.
#pragma once

#include "common/error_code.hpp"
#include "common/run_config.hpp"

namespace wivex {

/// As a station or group client: takes an address by DHCP and says how that went. Returns 0 or 21.
ErrorCode take_address(const RunConfig& config);

/// As a group owner: sets the static address and starts the DHCP server. A failure is told on
/// standard error. Returns 0 or 12.
ErrorCode serve_addresses(const RunConfig& config);

} // namespace wivex

// SPDX-License-Identifier: Apache-2.0
// The MAC address check (-M): the address that the kernel reports must be the one in the chip.
#pragma once

#include "common/run_config.hpp"

#include <string>

namespace wivex {

/// Compares the two addresses and writes the chip's to the file "WIFIAddr" in `directory`, which
/// ends with "/" or is empty and becomes the path of that file. Returns 1 when they agree, else 0.
int mac_address_check(const RunConfig& config, std::string& directory);

} // namespace wivex

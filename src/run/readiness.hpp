// SPDX-License-Identifier: Apache-2.0
// Is a known module on the bus, and is its interface there and up? Both are read from files of the
// kernel, never asked of the supplicant.
#pragma once

#include "common/run_config.hpp"

#include <cstdint>
#include <string>

namespace wivex {

namespace interface_status {
inline constexpr std::int32_t ready = 0;
inline constexpr std::int32_t unreadable = -1;
inline constexpr std::int32_t flag_clear = -2;
} // namespace interface_status

/// Returns the chip type (1..5) of the first known module in the device list at `path` and stores
/// its product id, or 0.
int detect_usb_chip(const std::string& path, RunConfig& config);

/// Reads bit `bit` (1 is the lowest) of the flags file at `path`. Returns 1 when it is set, else 0;
/// `status` receives the reason: 0 set, -1 file not readable, -2 clear.
int read_interface_flag(const std::string& path, int bit, std::int32_t& status);

/// Path of the flags file of the Wi-Fi interface.
std::string interface_flags_path(const RunConfig& config);

/// Looks for a module, stores `chip_type`, prints what was found. Returns 1 present, 0 absent.
int check_module(RunConfig& config);

/// Returns 0 ready, -1 driver not loaded, -2 interface down.
std::int32_t check_driver(const RunConfig& config);

} // namespace wivex

// SPDX-License-Identifier: Apache-2.0
// What happens once, before the first iteration.
#pragma once

#include "common/run_config.hpp"

namespace wivex {

void print_banner();

/// The configuration file that the options choose. Null means that none is to be read.
const char* chosen_config_path();

/// Reads the configuration file that the options choose. An unknown choice reads none and is no
/// error. Returns false, after a message, when the file cannot be read.
bool read_chosen_config(RunConfig& config);

/// Creates the result records of the checks and of the chosen modes.
void enable_chosen_test_cases();

/// Mounts the kernel's USB device list if it is missing.
void provide_usb_device_list();

/// Brings the Wi-Fi interface up when its flags say that it is down.
void bring_interface_up(const RunConfig& config);

} // namespace wivex

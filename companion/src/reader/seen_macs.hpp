// SPDX-License-Identifier: Apache-2.0
// Keeps the MAC addresses that a console shows, and the first that do not fit together.
#pragma once

#include "model/identity.hpp"

#include <string_view>

namespace wivex::report {

/// Takes what stands on the console; what is no MAC address is left out.
void see_kernel_mac(SeenMacs& macs, std::string_view kernel);

/// The chip's address, and the kernel's that was told before it.
void see_chip_mac(SeenMacs& macs, std::string_view chip, std::string_view kernel);

} // namespace wivex::report

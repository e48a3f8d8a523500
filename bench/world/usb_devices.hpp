// SPDX-License-Identifier: Apache-2.0
// The kernel's list of USB devices, in the kernel's form.
#pragma once

#include <string>

namespace bench {

/// A list with a root hub, a serial adapter, and the module with the ids "VENDOR:PRODUCT" between
/// them; without it when `module` is empty.
std::string usb_device_list(const std::string& module);

} // namespace bench

// SPDX-License-Identifier: Apache-2.0
// What the device itself tells of its Wi-Fi, for a report that is made on it: from /proc, /sys, the
// kernel's ethtool request and nl80211. What cannot be known stays unknown.
#pragma once

#include "model/identity.hpp"

#include <chrono>
#include <functional>
#include <optional>
#include <string>

namespace wivex::report {

/// Reads the files of the device below the folder `root` ("" for the machine's own). A string that
/// the maker of the board left as it came is not taken for a serial number.
Identity facts_in_files(const std::string& root, const std::string& interface);

/// The kernel's answers for `interface` and the release of the kernel.
Identity facts_of_kernel(const std::string& interface);

/// What `ask` returns, or nothing when it takes longer than `patience`: it runs in a process of its
/// own, which a driver that does not answer may keep for ever.
std::optional<std::string> told_within(std::chrono::milliseconds patience,
                                       const std::function<std::string()>& ask);

/// Everything that the device under `interface` tells within two seconds; a warning when it does
/// not.
Identity device_facts(const std::string& interface);

/// Whether `name` can be the name of an interface.
bool is_interface_name(const std::string& name);

} // namespace wivex::report

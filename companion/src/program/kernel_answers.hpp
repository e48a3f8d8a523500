// SPDX-License-Identifier: Apache-2.0
// What the kernel answers about a network interface. Each request may wait for the driver.
#pragma once

#include <string>

namespace wivex::report {

/// Empty where the driver tells nothing.
struct DriverAnswer {
    std::string name;
    std::string version;
    std::string firmware;
};

/// The kernel's driver information of ethtool.
DriverAnswer ask_driver(const std::string& interface);

/// Two letters of the country whose rules the radio of `interface` keeps ("00": those of all), or
/// nothing.
std::string regulatory_domain(const std::string& interface);

} // namespace wivex::report

// SPDX-License-Identifier: Apache-2.0
// The points, in the order in which a run meets them; each is a function of the facts and of what
// the device shows. Nothing here changes the device.
#pragma once

#include "facts.hpp"
#include "point.hpp"

#include <vector>

namespace wivex::doctor {

Point check_root(const Facts& facts);

/// Which points depend on values of the configuration: their faults are told with the line that
/// causes them.
struct Consequences {
    const Point& module;
    const Point& driver;
    const Point& supplicant;
};
Point check_configuration(const Facts& facts, const Consequences& consequences);

/// Also sets the chip type of the facts.
Point check_module_list(Facts& facts);
Point check_interface(const Facts& facts);
Point check_chip(const Facts& facts);
Point check_kernel_scan(const Facts& facts);
Point check_supplicant(const Facts& facts);
Point check_programs(const Facts& facts);
Point check_dhcp_settings(const Facts& facts);
Point check_air(const Facts& facts, const Point& supplicant);
Point check_files(const Facts& facts);
Point check_clock(const Facts& facts);

/// All points of the run.
std::vector<Point> check_all(const Request& request);

} // namespace wivex::doctor

// SPDX-License-Identifier: Apache-2.0
// The configuration file that the bench gives the tool.
#pragma once

#include "language/scenario.hpp"

#include <map>
#include <string>
#include <string_view>

namespace bench {

using Configuration = std::map<std::string, std::string>;

/// Addresses on the virtual Ethernet.
inline constexpr const char* access_point_address = "192.168.49.1";
inline constexpr const char* owner_address = "192.168.49.2";

/// The usual values, as those of a device on a production line.
Configuration usual_configuration();

/// Takes the values of a configuration file's text over those in `configuration`.
void take_values(std::string_view text, Configuration& configuration);

/// Applies the scenario's values.
void apply(const Scenario& scenario, Configuration& configuration);

std::string to_text(const Configuration& configuration);

} // namespace bench

// SPDX-License-Identifier: Apache-2.0
// Network interfaces of the worlds.
#pragma once

#include <sys/types.h>

#include <string>

namespace bench {

/// Joins two worlds by a virtual Ethernet: "wlan0" in the one, "ap0" in the other.
bool connect_worlds(pid_t device, pid_t access_point);

bool bring_up(const std::string& interface);

/// Gives the interface an address of a /24 network and brings it up.
bool set_address(const std::string& interface, const std::string& address);

} // namespace bench

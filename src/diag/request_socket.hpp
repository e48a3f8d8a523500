// SPDX-License-Identifier: Apache-2.0
// The way to the driver: a socket that serves as handle, and the name of the interface.
#pragma once

#include "common/unique_fd.hpp"

#include <linux/if.h>

#include <string_view>

namespace wivex {

/// Driver requests go to this interface, whatever the configuration names.
inline constexpr const char* driver_interface = "wlan0";

/// Opens a datagram socket for driver requests; empty on failure.
UniqueFd open_request_socket();

/// Copies at most 15 characters of `interface` into the name field of a request and terminates it.
void set_interface_name(char (&field)[IFNAMSIZ], std::string_view interface);

} // namespace wivex

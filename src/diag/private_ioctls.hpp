// SPDX-License-Identifier: Apache-2.0
// The table of private wireless-extension requests that a driver describes itself with.
#pragma once

#include "diag/request_socket.hpp"

#include <linux/wireless.h>

#include <vector>

namespace wivex {

/// Asks the driver of `interface` for its private requests through the socket `fd`, with a table
/// that grows as the driver asks. Fills `table` with what the driver filled and returns the number
/// of its entries, or leaves it empty and returns -1.
int get_priv_ioctls(int fd, const char* interface, std::vector<iw_priv_args>& table);

} // namespace wivex

// SPDX-License-Identifier: Apache-2.0
// The MAC address in the chip, as each family keeps it. Each reader returns false, having said why,
// when the check is to fail.
#pragma once

#include "common/run_config.hpp"
#include "common/unique_fd.hpp"

#include <string>

namespace wivex {

/// Asks the bcmdhd driver for its variable "cur_etheraddr".
bool read_broadcom_mac(const RunConfig& config, const std::string& kernel_mac, std::string& mac);

/// Reads the registers of the QCA chip; which of the two ways is taken is decided by the product
/// id. One that is neither leaves the address empty.
bool read_qca_mac(const RunConfig& config, const std::string& kernel_mac, std::string& mac);

/// A socket to ask a driver through; without one, says so with debug.
UniqueFd open_request_socket_or_tell();

} // namespace wivex

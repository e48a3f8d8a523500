// SPDX-License-Identifier: Apache-2.0
// Target memory of the QCA combo module, through its DIAG device: a file whose offset is a target
// address.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace wivex {

/// Reads target memory at `address` through `fd` until `buffer` is full. Returns the byte count of
/// the last read. A read that fails or ends early ends the process with status 1.
int ReadTargetRange(int fd, std::uint32_t address, std::span<char> buffer);

/// Reads the 32-bit word at `address`; see `ReadTargetRange`.
int read_target_word(int fd, std::uint32_t address, std::uint32_t& word);

/// The path that the shell printed, without its newline; a name that does not exist when it printed
/// less than 16 bytes.
std::string diag_path(std::string_view shell_output);

/// Reads the firmware's hardware address from the target. Returns 1 and the 17 characters of the
/// address in lower case in `out`, or 0 after a message.
int firmware_mac_address_qca_combo(std::string& out);

} // namespace wivex

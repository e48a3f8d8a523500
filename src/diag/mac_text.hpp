// SPDX-License-Identifier: Apache-2.0
// Hardware addresses as text: six two-digit hex bytes separated by ":".
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace wivex {

/// Length of a complete address text.
inline constexpr std::size_t mac_text_length = 17;

/// Writes the six bytes of an address in upper case.
void format_mac(std::span<char, mac_text_length + 1> text, std::span<const std::uint8_t, 6> bytes);

/// The same as a text of its own.
std::string format_mac(const std::array<std::uint8_t, 6>& bytes);

/// Appends the lowest `count` bytes of a 32-bit word, given as its eight hex digits, to `mac`:
/// lowest byte first, each followed by ":". The digits keep their case.
void append_lowest_bytes(std::string& mac, std::string_view digits, std::size_t count);

} // namespace wivex

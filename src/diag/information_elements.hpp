// SPDX-License-Identifier: Apache-2.0
// The SSID in the information elements of a beacon or probe response, and how it is printed.
#pragma once

#include "common/fixed_text.hpp"

#include <cstdint>
#include <span>

namespace wivex {

using Bytes = std::span<const std::uint8_t>;

/// The first SSID element of 1 to 32 bytes; empty when there is none. Elements that claim more
/// bytes than there are end the search.
Bytes find_ssid(Bytes elements);

/// Room for 32 bytes of which each needs four characters.
using SsidText = FixedText<129>;

/// The SSID as text: a blank at either end, a backslash and what is not printable become "\xNN".
SsidText escape_ssid(Bytes ssid);

} // namespace wivex

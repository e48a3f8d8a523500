// SPDX-License-Identifier: Apache-2.0
// Structures of the kernel as the bytes that they are.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace bench {

using Octets = std::vector<std::uint8_t>;

template <typename Value>
std::span<const std::uint8_t> octets_of(const Value& value) {
    return {reinterpret_cast<const std::uint8_t*>(&value), sizeof(value)};
}

} // namespace bench

// SPDX-License-Identifier: Apache-2.0
// What a fuzz target demands beyond not crashing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace fuzz {

/// Ends the target with a finding unless `condition` holds.
inline void require(bool condition) {
    if (!condition) {
        __builtin_trap();
    }
}

inline std::string_view text_of(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

} // namespace fuzz

// SPDX-License-Identifier: Apache-2.0
// What the rooms ask of texts.
#pragma once

#include <string_view>

namespace wivex {

/// True when `part` occurs in `text`. A zero byte ends a text that comes from a buffer.
constexpr bool contains(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

} // namespace wivex

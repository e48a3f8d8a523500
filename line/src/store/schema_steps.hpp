// SPDX-License-Identifier: Apache-2.0
// The statements of each step. A step that was ever released is never changed: a new one follows
// it.
#pragma once

#include <span>
#include <string_view>

namespace wivex::line {

/// In them "@number" is a key that counts by itself.
std::span<const std::string_view> tables_step();
std::span<const std::string_view> views_step();

} // namespace wivex::line

// SPDX-License-Identifier: Apache-2.0
// Lower-case copies of texts.
#pragma once

#include <string>

namespace wivex {

/// Returns `text` with every character lowered as the current locale does.
std::string to_lower_copy(std::string text);

} // namespace wivex

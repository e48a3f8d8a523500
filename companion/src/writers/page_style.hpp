// SPDX-License-Identifier: Apache-2.0
// The fixed parts of the page: its style and its few lines of script.
#pragma once

#include <string_view>

namespace wivex::report {

extern const std::string_view page_style;

/// Opens the described failure that a link leads to; the page is complete without it.
extern const std::string_view page_script;

} // namespace wivex::report

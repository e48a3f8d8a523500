// SPDX-License-Identifier: Apache-2.0
// What all parts of the page are made of.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace wivex::report {

/// A part of the page under its own title.
std::string card(std::string_view id, std::string_view title, const std::string& inner);

/// "1 iteration", "3 iterations".
std::string plural_iterations(std::uint32_t count);

/// A paragraph in the style `kind` ("soft", "amber", "bad") that holds `markup`.
std::string paragraph(std::string_view kind, const std::string& markup);

} // namespace wivex::report

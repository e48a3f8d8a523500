// SPDX-License-Identifier: Apache-2.0
// What other programs' lines tell of the reason behind a failure.
#pragma once

#include "model/sub_causes.hpp"

#include <string_view>

namespace wivex::report {

/// What a line of the supplicant or of a child tells; `SubCause::none` for all others.
SubCause read_sub_cause(std::string_view line);

} // namespace wivex::report

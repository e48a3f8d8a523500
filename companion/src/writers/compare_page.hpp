// SPDX-License-Identifier: Apache-2.0
// compare.html: two reports side by side.
#pragma once

#include "model/comparison.hpp"

#include <string>

namespace wivex::report {

std::string write_comparison_page(const Comparison& comparison);

} // namespace wivex::report

// SPDX-License-Identifier: Apache-2.0
// The points as a person reads them, and as a program does.
#pragma once

#include "point.hpp"
#include "request.hpp"

#include <string>
#include <vector>

namespace wivex::doctor {

/// One line a point, and below it what is bad, what the run prints and what mends it. With --quiet
/// only what is not good.
std::string as_text(const Request& request, const std::vector<Point>& points, bool colours);

/// The same as one JSON object.
std::string as_json(const Request& request, const std::vector<Point>& points);

} // namespace wivex::doctor

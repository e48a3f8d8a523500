// SPDX-License-Identifier: Apache-2.0
// The pictures of the site. All that they show stands in a table beside them too.
#pragma once

#include "model/factory.hpp"

#include <string>

namespace wivex::line {

/// Each day's first-pass yield with the limits of a p-chart around the yield of all of them.
std::string yield_chart(const Factory& factory);

/// The causes as bars, and the line of their sum.
std::string pareto_chart(const Factory& factory);

/// All days together: the rate behind the limits of the chart.
Share all_days(const Factory& factory);

/// Whether a day lies outside of its limits.
bool is_outside(const Share& day, double rate);

} // namespace wivex::line

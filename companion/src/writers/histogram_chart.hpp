// SPDX-License-Identifier: Apache-2.0
// How the values of a figure are spread: bars, and the same numbers in a table.
#pragma once

#include "model/limits.hpp"
#include "model/series.hpp"

#include <string>
#include <string_view>
#include <vector>

namespace wivex::report {

struct HistogramLabels {
    std::string_view what; ///< "Throughput"
    std::string_view unit; ///< "Mbit/s"
    std::vector<Limit> limits = {};
};

/// Empty without values.
std::string histogram(const Series& series, const HistogramLabels& labels);

} // namespace wivex::report

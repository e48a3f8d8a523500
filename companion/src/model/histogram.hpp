// SPDX-License-Identifier: Apache-2.0
// How often a figure had which values: its range in equal steps of a round width.
#pragma once

#include "model/series.hpp"

#include <cstdint>
#include <vector>

namespace wivex::report {

/// Values from `from` up to, and without, `to`.
struct Bin {
    double from = 0;
    double to = 0;
    std::uint32_t count = 0;
};

constexpr std::size_t most_bins = 20;

/// Of the values that the series keeps; no bin without a value at either end.
std::vector<Bin> histogram_of(const Series& series);

/// The smallest round number that is not below `value`; 1 of what is not above 0.
double round_ceiling(double value);

} // namespace wivex::report

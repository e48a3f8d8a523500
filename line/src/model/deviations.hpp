// SPDX-License-Identifier: Apache-2.0
// Groups (stations, firmwares) whose figures are worse than those of all others.
#pragma once

#include "model/statistics.hpp"

#include <map>
#include <string>
#include <vector>

namespace wivex::line {

/// The sums of every measure, of one group.
using MeasureSums = std::vector<Sums>;

struct Deviation {
    std::string group;
    std::size_t measure = 0;
    Sums values;
    double chance = 1;
    bool marked = false; ///< worse than chance explains
};

/// One entry for each group and measure with values, in the order of measures and groups.
/// `more_is_better` tells of each measure which way is worse.
std::vector<Deviation> deviations(const std::map<std::string, MeasureSums>& groups,
                                  const std::vector<bool>& more_is_better);

} // namespace wivex::line

// SPDX-License-Identifier: Apache-2.0
// The columns of the table of runs, and the values of one run in their order.
#pragma once

#include "model/report.hpp"
#include "store/statement.hpp"

#include <string>
#include <vector>

namespace wivex::line {

/// "insert into runs ... on conflict do nothing returning run_no".
const std::string& run_insert();

/// The kinds of its parameters.
const std::string& run_kinds();

std::vector<Value> run_values(const Report& report, const RunRecord& run, std::int64_t unit_no,
                              std::int64_t added);

/// The columns of throughput, signal and phase times with their units, worst direction and words.
struct Measure {
    std::string column;
    std::string words;
    std::string unit;
    bool more_is_better = false;
};

const std::vector<Measure>& measures();

} // namespace wivex::line

// SPDX-License-Identifier: Apache-2.0
// How what decides about attempts is read from the table of runs.
#pragma once

#include "model/attempts.hpp"
#include "store/statement.hpp"

namespace wivex::line {

/// Columns of runs for the head of a select, and their kinds.
inline constexpr const char* run_key_columns =
    "run_no, unit_no, attempt, report_id, passed, cause, station, firmware, began_utc_s";
inline constexpr const char* run_key_kinds = "ccctctttc";

/// The first column behind them.
inline constexpr std::size_t behind_run_key = 9;

inline RunKey run_key(const Statement& row) {
    return {row.count(0), row.optional_count(2), row.text(3), row.count(4) == 1,
            row.text(5),  row.text(6),           row.text(7), row.optional_count(8)};
}

} // namespace wivex::line

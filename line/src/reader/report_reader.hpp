// SPDX-License-Identifier: Apache-2.0
// Reads a run.json. It trusts nothing: a report that contradicts itself is refused, and only a
// verdict that everything else in the report bears out is a pass.
#pragma once

#include "model/report.hpp"

#include <string>
#include <string_view>

namespace wivex::line {

enum class ReadResult : std::uint8_t {
    good,
    unreadable, ///< not a report, or one that contradicts itself
    nameless,   ///< a good report that does not say which unit was tested
};

/// Reads the report in `text`. `serial`, unless it is empty, names the unit of a report that names
/// none. When the result is not good, `reason` says why.
ReadResult read_report(std::string_view text, std::string_view serial, Report& report,
                       std::string& reason);

/// Why `serial` can be no serial number; empty when it can.
std::string objection_to_serial(std::string_view serial);

} // namespace wivex::line

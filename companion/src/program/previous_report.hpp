// SPDX-License-Identifier: Apache-2.0
// The report that stands in a folder before a new one takes its place.
#pragma once

#include "model/identity.hpp"

#include <string>
#include <string_view>

namespace wivex::report {

/// Reads from the report in `folder` which unit it was, into `previous_serial` and `previous_mac`;
/// leaves them empty when there is no report, or one that cannot be read.
void read_previous_report(const std::string& folder, Identity& identity);

/// The same from the first bytes of the report.
void take_previous_report(std::string_view report, Identity& identity);

} // namespace wivex::report

// SPDX-License-Identifier: Apache-2.0
// What other programs' lines tell: the reason behind a failure, the access point of a connection.
#pragma once

#include "model/sub_causes.hpp"

#include <string_view>

namespace wivex::report {

/// What a line of the supplicant or of a child tells; `SubCause::none` for all others.
SubCause read_sub_cause(std::string_view line);

/// The BSSID in the supplicant's event of a connection; empty for all other lines.
std::string_view read_connection(std::string_view line);

} // namespace wivex::report

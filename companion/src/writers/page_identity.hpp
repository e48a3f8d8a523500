// SPDX-License-Identifier: Apache-2.0
// The head of the page: which device, where, and whatever makes that doubtful.
#pragma once

#include "model/run.hpp"

#include <string>

namespace wivex::report {

/// The title of the page, escaped: the unit first, so that it stands in a narrow tab.
std::string page_title(const Log& log);

/// What is known of the device and the station, and the warnings.
std::string identity_part(const Log& log);

} // namespace wivex::report

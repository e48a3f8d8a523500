// SPDX-License-Identifier: Apache-2.0
// The head of the page: which device, where, and whatever makes that doubtful.
#pragma once

#include "model/run.hpp"

#include <string>

namespace wivex::report {

/// What is known of the device and the station, and the warnings.
std::string identity_part(const Log& log);

} // namespace wivex::report

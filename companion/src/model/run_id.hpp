// SPDX-License-Identifier: Apache-2.0
// The id of a run: made of what the run is, so that one that is reported twice is the same run.
#pragma once

#include "model/run.hpp"

#include <string>

namespace wivex::report {

/// 32 hexadecimal digits in lower case, made of the console lines of `run`, the unit and the
/// attempt: the serial number, or the MAC address that the device told when there is none. Not of
/// the station, of the time of reporting, or of when lines arrived. While a run goes on its id
/// changes.
std::string run_id(const Log& log, const Run& run);

} // namespace wivex::report

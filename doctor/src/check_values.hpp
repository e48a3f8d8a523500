// SPDX-License-Identifier: Apache-2.0
// Values of the configuration that no other point shows.
#pragma once

#include "facts.hpp"
#include "key_uses.hpp"
#include "point.hpp"

namespace wivex::doctor {

/// What comes of blanks, quotes or a carriage return in the value of a key: the state and what the
/// run prints. For kinds that a point of their own judges, nothing.
Remark consequence_of_value(const KeyUse& use, const Facts& facts);

/// Empty values that the run needs, numbers that are none, texts of a wrong length or form.
void judge_values(const Facts& facts, Point& point);

/// Whether this run starts iperf.
bool runs_iperf(const Facts& facts);

} // namespace wivex::doctor

// SPDX-License-Identifier: Apache-2.0
// The console of the tool's own code when it works for the doctor: nothing that it prints reaches
// anybody, and what it said is kept.
#pragma once

#include <string>

namespace wivex::doctor {

/// What the tool's code has printed on both streams since the last call.
std::string take_tool_output();

} // namespace wivex::doctor

// SPDX-License-Identifier: Apache-2.0
// The head of a run on the page: its verdict, and what is missing for a pass.
#pragma once

#include "model/verdict.hpp"

#include <string>

namespace wivex::report {

/// The style of a verdict; `weak`: the passes do not prove all that they say.
std::string_view style_of(RunVerdict verdict, bool weak = false);

/// Card ids begin with `prefix`.
std::string verdict_part(const Run& run, const Judgement& judgement, const std::string& prefix);

} // namespace wivex::report

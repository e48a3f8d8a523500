// SPDX-License-Identifier: Apache-2.0
// What each finding on the console does to the log.
#pragma once

#include "console/finding.hpp"
#include "reader/log_builder.hpp"

namespace wivex::report {

void take(LogBuilder& builder, const Finding& finding);

// ---- The parts of it. A run is open; `text` is the one that told it.

void take_fact(LogBuilder& builder, const ToolText& text, const Fact& fact);
void take_course(LogBuilder& builder, const ToolText& text, const CourseEvent& event);
void take_ending(LogBuilder& builder, const Ending& ending);

} // namespace wivex::report

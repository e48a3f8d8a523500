// SPDX-License-Identifier: Apache-2.0
// Words for a run that several writers use.
#pragma once

#include "model/run.hpp"

#include <string>
#include <string_view>

namespace wivex::report {

/// "scan: SCAN refused".
std::string cause_words(Cause cause);

/// The same, and what lies behind it.
std::string failure_words(const Failure& failure);

/// Why the failures of a cause without a test case stand in no count of the result file.
std::string_view uncounted_words(const Run& run);

} // namespace wivex::report

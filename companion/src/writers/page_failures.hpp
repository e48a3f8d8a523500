// SPDX-License-Identifier: Apache-2.0
// The part of the page that shows what failed: by cause, with the console lines that tell it.
#pragma once

#include "model/run.hpp"

#include <string>

namespace wivex::report {

/// Empty when nothing failed. Anchors of failures are "PREFIXiNUMBER".
std::string failures_card(const Run& run, const std::string& prefix);

} // namespace wivex::report

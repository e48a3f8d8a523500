// SPDX-License-Identifier: Apache-2.0
// The iterations of a run: checks first, then one mode, and the recording of what went wrong.
#pragma once

#include "common/run_config.hpp"

namespace wivex {

enum class RunEnd {
    /// All iterations are done.
    finished,
    /// SoftAP mode ended the run in its first iteration: no result file, no clean-up.
    softap,
};

RunEnd run_loop(RunConfig& config);

} // namespace wivex

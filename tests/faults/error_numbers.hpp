// SPDX-License-Identifier: Apache-2.0
// The errors that a system call can give.
#pragma once

#include "call_log.hpp"

#include <string>
#include <vector>

namespace faults {

/// What the tracer is told to do with one call: "error=ENOSPC", or "retval=0" where a call tells
/// its failure by a value.
using Failure = std::string;

/// How this call can fail on a device. Empty for a call that cannot, or only when its caller is
/// wrong.
std::vector<Failure> failures_of(const Call& call);

} // namespace faults

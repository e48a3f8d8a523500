// SPDX-License-Identifier: Apache-2.0
// Sends the planned signals that do not wait for a command.
#pragma once

#include "language/signal_plan.hpp"
#include "world/collect.hpp"

#include <sys/types.h>

namespace bench {

/// Starts a process for each planned signal that goes by time or by a child of the tool. Each notes
/// in "signals" among the logs when it sends, in milliseconds since `watch` was started.
void start_signallers(const SignalPlan& signals, pid_t tool, const Stopwatch& watch);

} // namespace bench

// Sends the planned signals that do not wait for a command.
#pragma once

#include "signal_plan.hpp"

#include <sys/types.h>

namespace bench {

/// Starts a process for each planned signal that goes by time or by a child of the tool.
void start_signallers(const SignalPlan& signals, pid_t tool);

} // namespace bench

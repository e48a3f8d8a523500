// SPDX-License-Identifier: Apache-2.0
// The simulated supplicant: serves the control sockets "wlan0" and "p2p0" as a scenario says, and
// where it says nothing as a well-behaved supplicant would.
#pragma once

#include "language/scenario.hpp"
#include "language/signal_plan.hpp"
#include "supplicant/usual_behaviour.hpp"

#include <string>

namespace bench {

struct SupplicantSettings {
    /// Folder of the control sockets.
    std::string folder;
    Neighbourhood around;
    SupplicantScript script;
    /// How much faster than the wall clock the tool's clock runs; all delays shrink with it.
    int speed = 1;
    /// Every command is written to this descriptor; -1 for none.
    int log_fd = -1;
    /// Signals that are sent to the tool when a command arrives.
    SignalPlan signals;
};

/// Serves until the process is ended. Calls `ready` once the sockets stand.
void run_supplicant(const SupplicantSettings& settings, void (*ready)());

} // namespace bench

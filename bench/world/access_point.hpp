// SPDX-License-Identifier: Apache-2.0
// The world at the other end of the air: a real DHCP server and a real iperf server.
#pragma once

#include "world/gate.hpp"

namespace bench {

struct AccessPointServices {
    bool dhcp = true;
    bool iperf = false;
};

/// Sets up its interface once `network` is open, starts the services, opens `ready` when they
/// listen, and stays until it is killed. Runs in namespaces of its own, so that the tool's
/// "killall" does not reach it.
int run_access_point(const AccessPointServices& services, Gate& network, const Gate& ready);

} // namespace bench

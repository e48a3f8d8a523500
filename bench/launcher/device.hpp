// SPDX-License-Identifier: Apache-2.0
// The device's world: its root folder, its interface, its supplicant, and the tool itself.
#pragma once

#include "language/scenario.hpp"
#include "launcher/options.hpp"
#include "world/configuration.hpp"
#include "world/gate.hpp"

namespace bench {

struct Device {
    const Options& options;
    const Scenario& scenario;
    const Configuration& configuration;
    /// Folder for what is left behind, or -1.
    int out_fd = -1;
};

/// Runs the tool once `network` and `access_point` are open. Returns the exit status of the
/// launcher. To be called as the first process of new namespaces.
int run_device(const Device& device, Gate& network, Gate& access_point);

} // namespace bench

// SPDX-License-Identifier: Apache-2.0
// The device's world: its root folder, its interface, its supplicant, and the tool itself.
#pragma once

#include "configuration.hpp"
#include "gate.hpp"
#include "options.hpp"
#include "scenario.hpp"

namespace bench {

/// Exit status of the launcher when the bench itself fails.
inline constexpr int bench_failure = 125;

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

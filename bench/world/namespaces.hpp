// SPDX-License-Identifier: Apache-2.0
// Private namespaces: processes in worlds of their own, as root or as an ordinary user.
#pragma once

#include <sys/types.h>

#include <functional>
#include <string>

namespace bench {

/// As an ordinary user: enters a user namespace in which this process is root. As root: nothing.
/// Returns false with a reason in `problem` where the kernel does not allow it.
bool become_root(std::string& problem);

/// Starts a process that is the first of new mount, process, network and IPC namespaces and runs
/// `world`. It dies with this process. Returns its id, or -1.
pid_t start_world(const std::function<int()>& world);

/// Makes every mount of this namespace private to it.
bool make_mounts_private();

/// Runs a program with its output thrown away, and waits for it. Returns its exit status, or -1.
int run_quietly(const std::string& command);

} // namespace bench

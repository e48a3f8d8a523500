// SPDX-License-Identifier: Apache-2.0
// A SIGTERM that this process passes on.
#pragma once

#include <sys/types.h>

namespace bench {

/// From now on every SIGTERM goes to `process`, and to nobody while that is -1.
void forward_sigterm_to(pid_t process);

} // namespace bench

// SPDX-License-Identifier: Apache-2.0
#include "world/forwarding.hpp"

#include <signal.h>

namespace bench {

namespace {

volatile pid_t receiver = -1;

void forward(int signal_number) {
    if (receiver > 0) {
        kill(receiver, signal_number);
    }
}

} // namespace

void forward_sigterm_to(pid_t process) {
    receiver = process;
    signal(SIGTERM, forward);
}

} // namespace bench

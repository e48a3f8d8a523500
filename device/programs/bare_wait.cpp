// SPDX-License-Identifier: Apache-2.0
// bare-wait SOCKET: wait for an event that never comes, as long as the process lives: look, and
// sleep until the clock shows its next second. The floor that the waits of the tool are held
// against.
#include "bare_control.hpp"

int main(int argc, char** argv) {
    const BareControl events(argc == 2 ? argv[1] : "", 1);
    return events.request("ATTACH") && events.await_event("NEVER") ? 0 : 1;
}

// SPDX-License-Identifier: Apache-2.0
// bare-wait SOCKET: wait for an event that never comes, as long as the process lives: look, and
// sleep until the clock shows its next second. The floor that the waits of the tool are held
// against.
#include "bare_control.hpp"

int main(int argc, char** argv) {
    BareControl events;
    if (argc != 2 || !events.open(argv[1], 1) || !events.request("ATTACH")) {
        return 1;
    }
    return events.await_event("NEVER") ? 0 : 1;
}

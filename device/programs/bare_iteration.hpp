// SPDX-License-Identifier: Apache-2.0
// What every iteration of a mode asks the kernel for besides its work, by bare system calls.
#pragma once

// The number of iterations: the only argument of a program. 0 after a line on standard error when
// it is something else.
int iterations_of(int argc, char** argv);

// Reads the list of the bus, as far as one read goes, and the flags of wlan0. False when either is
// empty.
bool read_readiness();

void pause_after_iteration();

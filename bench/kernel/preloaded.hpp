// SPDX-License-Identifier: Apache-2.0
// What the libraries share that are loaded into the tool.
#pragma once

#include "language/scenario.hpp"

#include <dlfcn.h>

namespace bench {

/// The function of this name behind the library's own: another library's, or the system's.
template <typename Function>
Function next_function(const char* name) {
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

/// The scenario of this world. Ends the process after a message when it cannot be understood.
Scenario played_scenario();

void pause_ms(int milliseconds);

} // namespace bench

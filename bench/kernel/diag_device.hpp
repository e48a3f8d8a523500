// SPDX-License-Identifier: Apache-2.0
// The DIAG device of the simulated chip: the file "/proc/cld/athdiagpfs".
#pragma once

#include "language/chip_script.hpp"

namespace bench {

/// Puts the file into the private /proc of the calling process's namespaces, with the words of
/// `script` at their addresses. A kernel's own /proc takes no new entry, so it gives way to a
/// directory of links to it. Throws std::system_error.
void add_diag_device(const ChipScript& script);

} // namespace bench

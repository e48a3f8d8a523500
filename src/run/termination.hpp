// SPDX-License-Identifier: Apache-2.0
// How a run ends: the clean-up, and the handler that ends it early.
#pragma once

namespace wivex {

/// Closes both supplicant connections.
void cleanup();

/// Handler of SIGINT and SIGTERM; never returns. SIGINT writes the result file. SIGTERM does not,
/// but takes a Broadcom USB driver out of its loopback mode. Ends the process with status 0.
[[noreturn]] void termination_handler(int signal_number);

} // namespace wivex

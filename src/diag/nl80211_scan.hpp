// SPDX-License-Identifier: Apache-2.0
// A scan of the interface wlan0 straight through the kernel, without the supplicant.
#pragma once

struct nl_sock;

namespace wivex {

class FileWriter;

/// Where the listing of a scan goes: three lines for each BSS.
inline constexpr const char* scan_listing = "/tmp/output";

/// Scans, waits for the kernel to finish without a limit, writes the listing and appends what was
/// found to `scan_table()`. Returns 0, or -2 after a message; a failure before the listing is
/// opened leaves the previous one as it was. A listing that is a symbolic link cannot be opened.
int execute_scan_nl_command();

/// Triggers a scan through `socket` and waits until the kernel reports its end. Returns 0, 1 when
/// the kernel aborted it, -12 without memory, or a negative libnl error.
int do_scan_trigger(nl_sock* socket, unsigned interface_index, int family);

/// Asks for the BSS list through `socket`, writes it to `listing` and appends it to `scan_table()`.
/// Returns 0, or -2 after a message.
int dump_scan(nl_sock* socket, unsigned interface_index, int family, FileWriter& listing);

} // namespace wivex

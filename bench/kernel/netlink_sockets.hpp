// SPDX-License-Identifier: Apache-2.0
// The tool's generic netlink sockets, whose other end is the simulated nl80211.
#pragma once

#include <linux/netlink.h>

namespace bench {

/// The kernel's end of a socket of the tool.
struct KernelEnd {
    int fd = -1;
    bool overflow = false;
    bool lost = false;
    /// Whether the socket has joined a group, and is told of what happens.
    bool member = false;
};

/// The kernel's end of the tool's socket `fd`; null for any other descriptor.
KernelEnd* kernel_end_of(int fd);

/// Puts one end of a pair in the place of the socket that the tool was given. Returns false, with
/// errno set, when that fails.
bool connect_to_kernel(int fd, int flags);

/// Closes the end that belongs to a socket of the tool.
void leave_kernel(int fd);

/// Closes a descriptor without a look at whose it is.
void close_really(int fd);

/// Reads what the tool has sent to the kernel's end, and answers it.
void take_message(KernelEnd& end);

/// Whether the next message for the tool's socket `fd` is the notification that ends a scan.
bool ends_scan(int fd);

} // namespace bench

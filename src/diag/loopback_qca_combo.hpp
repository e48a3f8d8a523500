// SPDX-License-Identifier: Apache-2.0
// Bus loopback of the QCA combo module, through a private request of its driver.
#pragma once

#include "common/run_config.hpp"

#include <linux/wireless.h>

#include <span>
#include <string_view>

namespace wivex {

/// Runs the loopback of the driver and prints the verdict. Returns 1 on a pass, 0 on a failure.
int loopback_qca_combo(const RunConfig& config);

/// Sends the private request whose name in `table` begins with `command` through the socket `fd`.
/// Returns 0 when packets went round without errors, -1 when the table has no such request or it
/// has the wrong number, 1 when the driver refuses it, 2 when the driver reports errors.
int qca_combo_loopback(int fd, const char* command, const char* interface,
                       std::span<const iw_priv_args> table);

/// What the driver counted; 0 where its answer says nothing.
struct LoopbackCounts {
    int total = 0;
    int sequence_errors = 0;
    int content_errors = 0;
};

/// Reads the counts from an answer such as "total 100 seq_err 0 content_err 0".
LoopbackCounts parse_loopback_answer(const char* answer);

/// Index of the first entry of `table` whose name begins with `command`, or the size of the table.
std::size_t find_private_ioctl(std::span<const iw_priv_args> table, std::string_view command);

} // namespace wivex

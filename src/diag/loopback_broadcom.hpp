// SPDX-License-Identifier: Apache-2.0
// Bus loopback of Broadcom modules, through variables of the bcmdhd driver.
#pragma once

#include "common/run_config.hpp"

namespace wivex {

/// Sets the driver to loopback mode and has it transfer `loopback_pkt_cnt` packets of
/// `loopback_pkt_size` bytes. Returns 1 on a pass, 0 on a failure. The driver stays in loopback
/// mode.
int loopback_broadcom(const RunConfig& config);

/// Takes the driver out of its loopback mode, through the parameter of its module, and says so.
void leave_broadcom_loopback();

} // namespace wivex

// SPDX-License-Identifier: Apache-2.0
// What differs between chip families: one row each.
#pragma once

#include "common/known_modules.hpp"
#include "common/run_config.hpp"

#include <string>

namespace wivex {

struct ChipFamilyRow {
    ChipFamily family;
    /// Runs the bus loopback; returns 1 on a pass, 0 on a failure. Null: there is none.
    int (*loopback)(const RunConfig& config);
    /// Reads the chip's address into `mac`; `kernel_mac` is only shown. Returns false, having said
    /// why, when the check is to fail. Null: the chip has no address to read.
    bool (*read_mac)(const RunConfig& config, const std::string& kernel_mac, std::string& mac);
    /// Undoes the loopback when the run is killed. Null: nothing to undo and nothing to say.
    void (*leave_loopback)();
};

/// The row of the module that the last module check found.
const ChipFamilyRow& chip_family();

} // namespace wivex

// SPDX-License-Identifier: Apache-2.0
// What the points are judged by, gathered once.
#pragma once

#include "common/run_config.hpp"
#include "request.hpp"

#include <cstdint>
#include <string>

namespace wivex::doctor {

struct Facts {
    RunPlan plan;
    bool scan_wanted = false;
    /// The configuration file; empty when the run reads none.
    std::string config_path;
    /// As the tool reads it.
    RunConfig config;
    /// What the tool says while it reads a file that it cannot read; empty when it can.
    std::string config_failure;
    /// Number of the module that the tool finds, 0 for none.
    std::int32_t chip_type = 0;
};

/// Reads the chosen configuration file with the tool's own reader.
Facts gather_facts(const Request& request);

} // namespace wivex::doctor

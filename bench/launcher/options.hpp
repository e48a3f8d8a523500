// SPDX-License-Identifier: Apache-2.0
// The launcher's command line.
#pragma once

#include "language/signal_plan.hpp"
#include "world/tool_start.hpp"

#include <string>
#include <vector>

namespace bench {

struct Options {
    std::string scenario;
    std::string config;
    std::vector<std::string> settings;
    std::string out;
    std::string tool;
    /// The simulated driver, built for the tool's processor.
    std::string driver;
    ToolStart start;
    int descriptor_limit = 0;
    SignalPlan signals;
    bool shell = false;
    std::vector<std::string> tool_arguments;
};

/// Reads the options. Returns false after a message when they are wrong or help was asked for.
bool parse_options(int argc, char* argv[], Options& options);

} // namespace bench

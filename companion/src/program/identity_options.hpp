// SPDX-License-Identifier: Apache-2.0
// The options that say which device is tested, where and by whom.
#pragma once

#include "model/identity.hpp"

#include <CLI/CLI.hpp>
#include <optional>
#include <string>
#include <vector>

namespace wivex::report {

struct IdentityOptions {
    std::optional<std::string> serial;
    std::optional<std::string> part;
    std::optional<std::string> station;
    std::optional<std::string> attempt;
    std::optional<std::string> operator_name;
    std::vector<std::string> facts;
    std::string file;
    std::string interface = "wlan0";
    bool on_device = false;
};

void declare_identity(CLI::App& app, IdentityOptions& options);

/// Puts the identity together: the command line beats the file, the file what the device tells, and
/// that the name of this host. `out`: the folder of the report, whose last one is looked at; may be
/// empty. Returns what is wrong, or nothing.
std::string settle_identity(const IdentityOptions& options, const std::string& out,
                            Identity& identity);

} // namespace wivex::report

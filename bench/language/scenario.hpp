// SPDX-License-Identifier: Apache-2.0
// A scenario: what the bench plays to the tool, read from one small text file.
//
// The first word of a line names who it speaks of; README.md lists them all. An actor with many
// words has a script of its own.
#pragma once

#include "language/air_script.hpp"
#include "language/chip_script.hpp"
#include "language/driver_script.hpp"
#include "language/supplicant_script.hpp"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace bench {

enum class InterfaceState { up, down, absent };
enum class FolderState { missing, read_only, full };

struct Scenario {
    /// The scenario as it was written.
    std::string text;
    SupplicantScript supplicant;
    AirScript air;
    DriverScript driver;
    ChipScript chip;
    /// "VENDOR:PRODUCT", or empty for none.
    std::string module = "0a5c:bd27";
    InterfaceState interface = InterfaceState::up;
    bool dhcp_server = true;
    bool iperf_server = true;
    /// Configuration values that replace the usual ones; nothing removes the key.
    std::map<std::string, std::optional<std::string>> config;
    std::vector<std::string> hidden_programs;
    std::map<std::string, std::string> programs;
    std::map<std::string, std::string> files;
    /// Files whose opening never ends.
    std::vector<std::string> blocking_files;
    /// Symbolic links, and where they lead.
    std::map<std::string, std::string> links;
    std::map<std::string, FolderState> folders;
};

/// Reads a scenario from `text`; `name` stands in messages. On an error `problem` says which line
/// is wrong and why, and nothing is returned.
std::optional<Scenario> parse_scenario(std::string_view text, const std::string& name,
                                       std::string& problem);

} // namespace bench

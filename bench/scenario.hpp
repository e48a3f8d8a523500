// SPDX-License-Identifier: Apache-2.0
// A scenario: what the bench plays to the tool, read from one small text file.
//
// Each line's first word names who it speaks of; README.md lists them all. Lines of actors that
// live in files of their own are kept as they are, for those files to read.
#pragma once

#include "air/air_script.hpp"
#include "chip/chip_script.hpp"
#include "driver/driver_script.hpp"
#include "times.hpp"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace bench {

/// A command by its text; a pattern that ends with "*" matches what begins with it.
struct CommandMatch {
    std::string pattern;
    Times times;

    bool matches(std::string_view command) const;
};

/// When something happens: at a time after the start, or on a command. `delay_ms` counts from
/// there.
struct Trigger {
    std::optional<CommandMatch> command;
    int delay_ms = 0;
};

struct Answer {
    CommandMatch command;
    /// None at all is silence.
    std::vector<std::string> replies;
    int delay_ms = 0;
};

struct Event {
    static constexpr int forever = -1;

    std::string text;
    int times = 1;
    Trigger trigger;
};

enum class Turn { dies, dies_after_answer, stops };

/// The supplicant dies or falls asleep; `back_after_ms` later it returns or goes on, if given.
struct Fate {
    Turn turn = Turn::dies;
    Trigger trigger;
    std::optional<int> back_after_ms;
};

struct SupplicantScript {
    bool absent = false;
    std::vector<Answer> answers;
    std::vector<Event> events;
    /// Events of the well-behaved model that contain one of these are not sent.
    std::vector<std::string> withheld;
    std::vector<Fate> fates;
};

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

// SPDX-License-Identifier: Apache-2.0
// How the supplicant deviates from its usual behaviour, as a scenario's "supplicant" lines say it.
#pragma once

#include "language/times.hpp"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace bench {

class ScenarioLine;

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

/// Reads what follows the word "supplicant" on a line; false when it is not understood.
bool read_supplicant(ScenarioLine& line, SupplicantScript& script);

} // namespace bench

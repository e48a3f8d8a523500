// SPDX-License-Identifier: Apache-2.0
// The scenario's lines about the supplicant, looked up by the commands that have come so far.
#pragma once

#include "language/supplicant_script.hpp"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace bench {

class Script {
public:
    explicit Script(const SupplicantScript& lines) : lines_(lines) {}

    /// Counts a command that has come. Returns how many times this very text has come now.
    int count(const std::string& command) {
        return ++counts_[command];
    }

    // All that follow speak of a command that was counted last.

    /// The first line that answers it, or null.
    const Answer* answer_to(std::string_view command) const;
    std::vector<const Event*> events_on(std::string_view command) const;
    std::vector<const Fate*> fates_on(std::string_view command) const;

    /// Whether the usual event is not to be sent.
    bool withholds(std::string_view event) const;

private:
    bool happens(const CommandMatch& match, std::string_view command) const;

    template <typename Line>
    std::vector<const Line*> lines_on(std::string_view command, const std::vector<Line>& all) const;

    const SupplicantScript& lines_;
    std::map<std::string, int> counts_;
};

} // namespace bench

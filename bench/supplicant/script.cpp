// SPDX-License-Identifier: Apache-2.0
#include "supplicant/script.hpp"

#include <algorithm>

namespace bench {

// A pattern counts the commands that match it, whatever their texts.
bool Script::happens(const CommandMatch& match, std::string_view command) const {
    if (!match.matches(command)) {
        return false;
    }
    int count = 0;
    for (const auto& [text, times] : counts_) {
        count += match.matches(text) ? times : 0;
    }
    return match.times.contain(count);
}

template <typename Line>
std::vector<const Line*> Script::lines_on(std::string_view command,
                                          const std::vector<Line>& all) const {
    std::vector<const Line*> found;
    for (const Line& line : all) {
        if (line.trigger.command && happens(*line.trigger.command, command)) {
            found.push_back(&line);
        }
    }
    return found;
}

const Answer* Script::answer_to(std::string_view command) const {
    const auto fits = [&](const Answer& answer) { return happens(answer.command, command); };
    const auto found = std::find_if(lines_.answers.begin(), lines_.answers.end(), fits);
    return found == lines_.answers.end() ? nullptr : &*found;
}

std::vector<const Event*> Script::events_on(std::string_view command) const {
    return lines_on(command, lines_.events);
}

std::vector<const Fate*> Script::fates_on(std::string_view command) const {
    return lines_on(command, lines_.fates);
}

bool Script::withholds(std::string_view event) const {
    return std::any_of(
        lines_.withheld.begin(), lines_.withheld.end(),
        [&](const std::string& part) { return event.find(part) != std::string_view::npos; });
}

} // namespace bench

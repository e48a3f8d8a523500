// SPDX-License-Identifier: Apache-2.0
#include "language/supplicant_script.hpp"

#include "language/scenario_line.hpp"

#include <array>
#include <utility>

namespace bench {

namespace {

std::optional<CommandMatch> take_command(ScenarioLine& line) {
    const auto pattern = line.take_quoted();
    if (!pattern) {
        return std::nullopt;
    }
    return CommandMatch{*pattern, line.take_times().value_or(Times{})};
}

// "on COMMAND [TIMES] [after DELAY]" or "at DELAY".
std::optional<Trigger> take_trigger(ScenarioLine& line, std::string_view preposition) {
    Trigger trigger;
    if (line.take("at")) {
        const auto delay = line.take_milliseconds();
        if (!delay) {
            return std::nullopt;
        }
        trigger.delay_ms = *delay;
        return trigger;
    }
    if (!line.take(preposition)) {
        return std::nullopt;
    }
    trigger.command = take_command(line);
    if (!trigger.command || !line.take_after(trigger.delay_ms)) {
        return std::nullopt;
    }
    return trigger;
}

bool read_answers(ScenarioLine& line, SupplicantScript& script) {
    auto command = take_command(line);
    if (!command || !line.take("with")) {
        return false;
    }
    Answer answer{std::move(*command), {}, 0};
    while (auto reply = line.take_quoted()) {
        answer.replies.push_back(std::move(*reply));
    }
    if (answer.replies.empty() || !line.take_after(answer.delay_ms)) {
        return false;
    }
    script.answers.push_back(std::move(answer));
    return true;
}

bool read_ignores(ScenarioLine& line, SupplicantScript& script) {
    auto command = take_command(line);
    if (!command) {
        return false;
    }
    script.answers.push_back({std::move(*command), {}, 0});
    return true;
}

bool read_sends(ScenarioLine& line, SupplicantScript& script) {
    const auto text = line.take_quoted();
    if (!text) {
        return false;
    }
    Event event;
    event.text = *text;
    if (line.take("forever")) {
        event.times = Event::forever;
    } else if (const auto times = line.take_number()) {
        event.times = *times;
        if (!line.take("times")) {
            return false;
        }
    }
    const auto trigger = take_trigger(line, "on");
    if (!trigger) {
        return false;
    }
    event.trigger = *trigger;
    script.events.push_back(std::move(event));
    return true;
}

bool read_withholds(ScenarioLine& line, SupplicantScript& script) {
    const auto text = line.take_quoted();
    if (text) {
        script.withheld.push_back(*text);
    }
    return text.has_value();
}

bool add_fate(SupplicantScript& script, Turn turn, const std::optional<Trigger>& trigger) {
    if (trigger) {
        script.fates.push_back({turn, *trigger, std::nullopt});
    }
    return trigger.has_value();
}

bool read_dies(ScenarioLine& line, SupplicantScript& script) {
    return add_fate(script, Turn::dies, take_trigger(line, "on")) ||
           add_fate(script, Turn::dies_after_answer, take_trigger(line, "after"));
}

bool read_stops(ScenarioLine& line, SupplicantScript& script) {
    return add_fate(script, Turn::stops, take_trigger(line, "on"));
}

// "returns after DELAY" and "continues after DELAY" complete the fate before them.
bool read_comes_back(ScenarioLine& line, SupplicantScript& script) {
    if (script.fates.empty() || !line.take("after")) {
        return false;
    }
    script.fates.back().back_after_ms = line.take_milliseconds();
    return script.fates.back().back_after_ms.has_value();
}

} // namespace

bool CommandMatch::matches(std::string_view command) const {
    if (pattern.ends_with('*')) {
        return command.starts_with(std::string_view(pattern).substr(0, pattern.size() - 1));
    }
    return command == pattern;
}

bool read_supplicant(ScenarioLine& line, SupplicantScript& script) {
    if (line.take("absent")) {
        script.absent = true;
        return true;
    }
    constexpr std::array<Reader<SupplicantScript>, 8> readers{{{"answers", read_answers},
                                                               {"ignores", read_ignores},
                                                               {"sends", read_sends},
                                                               {"withholds", read_withholds},
                                                               {"dies", read_dies},
                                                               {"stops", read_stops},
                                                               {"returns", read_comes_back},
                                                               {"continues", read_comes_back}}};
    return read_by_word(line, script, readers);
}

} // namespace bench

// SPDX-License-Identifier: Apache-2.0
#include "scenario.hpp"

#include "line.hpp"

#include <algorithm>
#include <array>

namespace bench {

namespace {

std::optional<CommandMatch> take_command(Line& line) {
    const auto pattern = line.take_quoted();
    if (!pattern) {
        return std::nullopt;
    }
    return CommandMatch{*pattern, line.take_times().value_or(Times{})};
}

// "on COMMAND [TIMES] [after DELAY]" or "at DELAY".
std::optional<Trigger> take_trigger(Line& line, std::string_view preposition) {
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
    if (!trigger.command) {
        return std::nullopt;
    }
    if (line.take("after")) {
        const auto delay = line.take_milliseconds();
        if (!delay) {
            return std::nullopt;
        }
        trigger.delay_ms = *delay;
    }
    return trigger;
}

bool read_answers(Line& line, SupplicantScript& script) {
    auto command = take_command(line);
    if (!command || !line.take("with")) {
        return false;
    }
    Answer answer{std::move(*command), {}, 0};
    while (auto reply = line.take_quoted()) {
        answer.replies.push_back(std::move(*reply));
    }
    if (answer.replies.empty()) {
        return false;
    }
    if (line.take("after")) {
        const auto delay = line.take_milliseconds();
        if (!delay) {
            return false;
        }
        answer.delay_ms = *delay;
    }
    script.answers.push_back(std::move(answer));
    return true;
}

bool read_ignores(Line& line, SupplicantScript& script) {
    auto command = take_command(line);
    if (!command) {
        return false;
    }
    script.answers.push_back({std::move(*command), {}, 0});
    return true;
}

bool read_sends(Line& line, SupplicantScript& script) {
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

bool read_withholds(Line& line, SupplicantScript& script) {
    const auto text = line.take_quoted();
    if (text) {
        script.withheld.push_back(*text);
    }
    return text.has_value();
}

bool read_dies(Line& line, SupplicantScript& script) {
    Fate fate;
    auto trigger = take_trigger(line, "on");
    if (!trigger) {
        trigger = take_trigger(line, "after");
        fate.turn = Turn::dies_after_answer;
    }
    if (!trigger) {
        return false;
    }
    fate.trigger = *trigger;
    script.fates.push_back(std::move(fate));
    return true;
}

bool read_stops(Line& line, SupplicantScript& script) {
    const auto trigger = take_trigger(line, "on");
    if (!trigger) {
        return false;
    }
    script.fates.push_back({Turn::stops, *trigger, std::nullopt});
    return true;
}

// "returns after DELAY" and "continues after DELAY" complete the fate before them.
bool read_comes_back(Line& line, SupplicantScript& script) {
    if (script.fates.empty() || !line.take("after")) {
        return false;
    }
    script.fates.back().back_after_ms = line.take_milliseconds();
    return script.fates.back().back_after_ms.has_value();
}

bool read_supplicant(Line& line, Scenario& scenario) {
    SupplicantScript& script = scenario.supplicant;
    if (line.take("absent")) {
        script.absent = true;
        return true;
    }
    struct Verb {
        std::string_view name;
        bool (*read)(Line& line, SupplicantScript& script);
    };
    constexpr std::array<Verb, 8> verbs{{{"answers", read_answers},
                                         {"ignores", read_ignores},
                                         {"sends", read_sends},
                                         {"withholds", read_withholds},
                                         {"dies", read_dies},
                                         {"stops", read_stops},
                                         {"returns", read_comes_back},
                                         {"continues", read_comes_back}}};
    for (const Verb& verb : verbs) {
        if (line.take(verb.name)) {
            return verb.read(line, script);
        }
    }
    return false;
}

bool read_module(Line& line, Scenario& scenario) {
    const auto ids = line.take_any();
    if (!ids || (*ids != "none" && (ids->size() != 9 || (*ids)[4] != ':'))) {
        return false;
    }
    scenario.module = *ids == "none" ? "" : *ids;
    return true;
}

bool read_interface(Line& line, Scenario& scenario) {
    if (line.take("down")) {
        scenario.interface = InterfaceState::down;
        return true;
    }
    scenario.interface = InterfaceState::absent;
    return line.take("absent");
}

bool read_dhcp(Line& line, Scenario& scenario) {
    scenario.dhcp_server = false;
    return line.take("absent");
}

bool read_iperf(Line& line, Scenario& scenario) {
    scenario.iperf_server = false;
    return line.take("absent");
}

bool read_config(Line& line, Scenario& scenario) {
    if (line.take("without")) {
        const auto key = line.take_any();
        if (key) {
            scenario.config[*key] = std::nullopt;
        }
        return key.has_value();
    }
    const auto setting = line.take_any();
    const std::size_t equals = setting ? setting->find('=') : std::string::npos;
    if (equals == std::string::npos) {
        return false;
    }
    scenario.config[setting->substr(0, equals)] = setting->substr(equals + 1);
    return true;
}

bool read_program(Line& line, Scenario& scenario) {
    const auto name = line.take_any();
    if (!name) {
        return false;
    }
    if (line.take("missing")) {
        scenario.hidden_programs.push_back(*name);
        return true;
    }
    const auto script = line.take("runs") ? line.take_quoted() : std::nullopt;
    if (script) {
        scenario.programs[*name] = *script;
    }
    return script.has_value();
}

bool read_file_line(Line& line, Scenario& scenario) {
    const auto path = line.take_any();
    if (!path || !path->starts_with('/')) {
        return false;
    }
    if (line.take("blocks")) {
        scenario.blocking_files.push_back(*path);
        return true;
    }
    if (line.take("links")) {
        const auto target = line.take_any();
        scenario.links[*path] = target.value_or("");
        return target.has_value();
    }
    const auto content = line.take_quoted();
    if (content) {
        scenario.files[*path] = *content;
    }
    return content.has_value();
}

bool read_folder(Line& line, Scenario& scenario) {
    const auto path = line.take_any();
    if (!path || !path->starts_with('/')) {
        return false;
    }
    if (line.take("missing")) {
        scenario.folders[*path] = FolderState::missing;
        return true;
    }
    if (line.take("read-only")) {
        scenario.folders[*path] = FolderState::read_only;
        return true;
    }
    scenario.folders[*path] = FolderState::full;
    return line.take("full");
}

bool read_air_line(Line& line, Scenario& scenario) {
    return read_air(line, scenario.air);
}

bool read_driver_line(Line& line, Scenario& scenario) {
    return read_driver(line, scenario.driver);
}

bool read_chip_line(Line& line, Scenario& scenario) {
    return read_chip(line, scenario.chip);
}

bool read_line(Line& line, Scenario& scenario) {
    struct Actor {
        std::string_view name;
        bool (*read)(Line& line, Scenario& scenario);
    };
    constexpr std::array<Actor, 12> actors{{{"supplicant", read_supplicant},
                                            {"air", read_air_line},
                                            {"driver", read_driver_line},
                                            {"chip", read_chip_line},
                                            {"module", read_module},
                                            {"interface", read_interface},
                                            {"dhcp", read_dhcp},
                                            {"iperf", read_iperf},
                                            {"config", read_config},
                                            {"program", read_program},
                                            {"file", read_file_line},
                                            {"folder", read_folder}}};
    for (const Actor& actor : actors) {
        if (line.take(actor.name)) {
            return actor.read(line, scenario) && line.at_end();
        }
    }
    return false;
}

} // namespace

bool CommandMatch::matches(std::string_view command) const {
    if (pattern.ends_with('*')) {
        return command.starts_with(std::string_view(pattern).substr(0, pattern.size() - 1));
    }
    return command == pattern;
}

std::optional<Scenario> parse_scenario(std::string_view text, const std::string& name,
                                       std::string& problem) {
    Scenario scenario;
    scenario.text = text;
    for (int number = 1; !text.empty(); ++number) {
        const std::string_view content = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(content.size() + 1, text.size()));
        const auto words = split_words(content);
        const auto where = [&] { return name + ":" + std::to_string(number) + ": "; };
        if (!words) {
            problem = where() + "open quote or unknown escape: " + std::string(content);
            return std::nullopt;
        }
        Line line(*words);
        if (!line.at_end() && !read_line(line, scenario)) {
            problem = where() + "not understood: " + std::string(content);
            return std::nullopt;
        }
    }
    return scenario;
}

} // namespace bench

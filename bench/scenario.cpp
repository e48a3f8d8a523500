#include "scenario.hpp"

#include <algorithm>
#include <array>
#include <span>

namespace bench {

namespace {

// Actors whose lines are read elsewhere.
constexpr std::array<std::string_view, 2> other_actors{"driver", "air"};

// Reads the words of one line from left to right. Every taker moves on only when it succeeds.
class Line {
public:
    explicit Line(std::span<const Word> words) : words_(words) {}

    bool at_end() const {
        return words_.empty();
    }
    bool take(std::string_view word) {
        if (at_end() || words_.front().quoted || words_.front().text != word) {
            return false;
        }
        words_ = words_.subspan(1);
        return true;
    }
    std::optional<std::string> take_quoted() {
        return at_end() || !words_.front().quoted ? std::nullopt : take_any();
    }
    std::optional<std::string> take_any() {
        if (at_end()) {
            return std::nullopt;
        }
        std::string text = words_.front().text;
        words_ = words_.subspan(1);
        return text;
    }
    std::optional<int> take_number() {
        return take_with([](std::string_view text) { return to_number(text); });
    }
    std::optional<int> take_milliseconds() {
        return take_with([](std::string_view text) -> std::optional<int> {
            if (text.ends_with("ms")) {
                return to_number(text.substr(0, text.size() - 2));
            }
            if (!text.ends_with("s")) {
                return std::nullopt;
            }
            const auto seconds = to_number(text.substr(0, text.size() - 1));
            return seconds ? std::optional<int>(*seconds * 1000) : std::nullopt;
        });
    }
    // "3", "2-4" or "2-".
    std::optional<Times> take_times() {
        return take_with([](std::string_view text) -> std::optional<Times> {
            const std::size_t dash = text.find('-');
            const auto first = to_number(text.substr(0, dash));
            if (!first) {
                return std::nullopt;
            }
            if (dash == std::string_view::npos) {
                return Times{*first, *first};
            }
            if (dash + 1 == text.size()) {
                return Times{*first, Times{}.last};
            }
            const auto last = to_number(text.substr(dash + 1));
            return last ? std::optional<Times>(Times{*first, *last}) : std::nullopt;
        });
    }

private:
    template <typename Convert>
    auto take_with(Convert convert) -> decltype(convert("")) {
        if (at_end() || words_.front().quoted) {
            return std::nullopt;
        }
        auto value = convert(words_.front().text);
        if (value) {
            words_ = words_.subspan(1);
        }
        return value;
    }

    std::span<const Word> words_;
};

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
    const auto content = line.take_quoted();
    if (!path || !content || !path->starts_with('/')) {
        return false;
    }
    scenario.files[*path] = *content;
    return true;
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

bool read_line(Line& line, Scenario& scenario) {
    struct Actor {
        std::string_view name;
        bool (*read)(Line& line, Scenario& scenario);
    };
    constexpr std::array<Actor, 9> actors{{{"supplicant", read_supplicant},
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
    return std::any_of(other_actors.begin(), other_actors.end(),
                       [&line](std::string_view name) { return line.take(name); });
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

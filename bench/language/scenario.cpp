// SPDX-License-Identifier: Apache-2.0
#include "language/scenario.hpp"

#include "language/scenario_line.hpp"

#include <algorithm>
#include <array>

namespace bench {

namespace {

bool read_module(ScenarioLine& line, Scenario& scenario) {
    const auto ids = line.take_any();
    if (!ids || (*ids != "none" && (ids->size() != 9 || (*ids)[4] != ':'))) {
        return false;
    }
    scenario.module = *ids == "none" ? "" : *ids;
    return true;
}

bool read_interface(ScenarioLine& line, Scenario& scenario) {
    if (line.take("down")) {
        scenario.interface = InterfaceState::down;
        return true;
    }
    scenario.interface = InterfaceState::absent;
    return line.take("absent");
}

bool read_dhcp(ScenarioLine& line, Scenario& scenario) {
    scenario.dhcp_server = false;
    return line.take("absent");
}

bool read_iperf(ScenarioLine& line, Scenario& scenario) {
    scenario.iperf_server = false;
    return line.take("absent");
}

bool read_config(ScenarioLine& line, Scenario& scenario) {
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

bool read_program(ScenarioLine& line, Scenario& scenario) {
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

std::optional<std::string> take_path(ScenarioLine& line) {
    auto path = line.take_any();
    return path && path->starts_with('/') ? path : std::nullopt;
}

bool read_file_line(ScenarioLine& line, Scenario& scenario) {
    const auto path = take_path(line);
    if (!path) {
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

bool read_folder(ScenarioLine& line, Scenario& scenario) {
    const auto path = take_path(line);
    if (!path) {
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

bool read_line(ScenarioLine& line, Scenario& scenario) {
    constexpr std::array<Reader<Scenario>, 12> actors{
        {{"supplicant",
          [](ScenarioLine& rest, Scenario& all) { return read_supplicant(rest, all.supplicant); }},
         {"air", [](ScenarioLine& rest, Scenario& all) { return read_air(rest, all.air); }},
         {"driver",
          [](ScenarioLine& rest, Scenario& all) { return read_driver(rest, all.driver); }},
         {"chip", [](ScenarioLine& rest, Scenario& all) { return read_chip(rest, all.chip); }},
         {"module", read_module},
         {"interface", read_interface},
         {"dhcp", read_dhcp},
         {"iperf", read_iperf},
         {"config", read_config},
         {"program", read_program},
         {"file", read_file_line},
         {"folder", read_folder}}};
    return read_by_word(line, scenario, actors) && line.at_end();
}

} // namespace

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
        ScenarioLine line(*words);
        if (!line.at_end() && !read_line(line, scenario)) {
            problem = where() + "not understood: " + std::string(content);
            return std::nullopt;
        }
    }
    return scenario;
}

} // namespace bench

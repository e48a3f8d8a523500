// SPDX-License-Identifier: Apache-2.0
#include "language/air_script.hpp"

#include "language/scenario_line.hpp"

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <optional>
#include <string_view>

namespace bench {

namespace {

constexpr std::uint8_t ssid_element = 0;

std::optional<std::array<std::uint8_t, 6>> to_bssid(const std::string& text) {
    std::array<unsigned, 6> values{};
    char rest = 0;
    if (std::sscanf(text.c_str(), "%2x:%2x:%2x:%2x:%2x:%2x%c", values.data(), &values[1],
                    &values[2], &values[3], &values[4], &values[5], &rest) != 6) {
        return std::nullopt;
    }
    std::array<std::uint8_t, 6> bssid{};
    std::transform(values.begin(), values.end(), bssid.begin(),
                   [](unsigned value) { return static_cast<std::uint8_t>(value); });
    return bssid;
}

std::vector<std::uint8_t> ssid_as_element(std::string_view ssid) {
    std::vector<std::uint8_t> bytes{ssid_element, static_cast<std::uint8_t>(ssid.size())};
    bytes.insert(bytes.end(), ssid.begin(), ssid.end());
    return bytes;
}

// "nothing", "elements BYTES" or "SSID".
bool take_elements(ScenarioLine& line, HeardAccessPoint& access_point) {
    if (line.take("nothing")) {
        access_point.has_elements = false;
        return true;
    }
    const bool raw = line.take("elements");
    const auto text = line.take_quoted();
    if (!text) {
        return false;
    }
    access_point.elements =
        raw ? std::vector<std::uint8_t>(text->begin(), text->end()) : ssid_as_element(*text);
    return true;
}

// "hears N of PREFIX [SCANS]": N access points PREFIX1, PREFIX2, ...
bool read_crowd(ScenarioLine& line, int count, AirScript& script) {
    const auto prefix = line.take_quoted();
    if (!prefix) {
        return false;
    }
    const Times scans = line.take_times().value_or(Times{});
    for (int number = 1; number <= count; ++number) {
        HeardAccessPoint access_point;
        access_point.bssid = {2,
                              0,
                              0,
                              1,
                              static_cast<std::uint8_t>(number / 256),
                              static_cast<std::uint8_t>(number % 256)};
        access_point.signal_mbm = -4000 - number;
        access_point.elements = ssid_as_element(*prefix + std::to_string(number));
        access_point.scans = scans;
        script.access_points.push_back(access_point);
    }
    return true;
}

// "hears BSSID SIGNAL (SSID | elements BYTES | nothing) [SCANS]".
bool read_hears(ScenarioLine& line, AirScript& script) {
    if (const auto count = line.take_number()) {
        return line.take("of") && read_crowd(line, *count, script);
    }
    HeardAccessPoint access_point;
    const auto bssid = to_bssid(line.take_any().value_or(""));
    const auto signal = line.take_number();
    if (!bssid || !signal || !take_elements(line, access_point)) {
        return false;
    }
    access_point.bssid = *bssid;
    access_point.signal_mbm = *signal;
    access_point.scans = line.take_times().value_or(Times{});
    script.access_points.push_back(std::move(access_point));
    return true;
}

bool read_without(ScenarioLine& line, AirScript& script) {
    if (line.take("nl80211")) {
        script.has_nl80211 = false;
        return true;
    }
    script.has_scan_group = false;
    return line.take("group");
}

bool read_takes(ScenarioLine& line, AirScript& script) {
    const auto delay = line.take_milliseconds();
    script.scan_ms = delay.value_or(0);
    return delay.has_value();
}

struct FaultWord {
    std::string_view word;
    AirFault fault;
    bool takes_number;
};

constexpr std::array<FaultWord, 9> fault_words{{{"refuses", AirFault::refuses, true},
                                                {"aborts", AirFault::aborts, false},
                                                {"stays", AirFault::never_ends, false},
                                                {"garbles", AirFault::malformed, false},
                                                {"empties", AirFault::empty, false},
                                                {"cuts", AirFault::cut, true},
                                                {"fails", AirFault::fails, true},
                                                {"overflows", AirFault::overflows, false},
                                                {"repeats", AirFault::repeats, true}}};

bool read_loses(ScenarioLine& line, AirScript& script) {
    AirEvent event;
    event.fault = line.take("answer") ? AirFault::loses_answer : AirFault::loses_dump;
    if (event.fault == AirFault::loses_dump && !line.take("dump")) {
        return false;
    }
    event.scans = line.take_times().value_or(Times{});
    script.events.push_back(event);
    return true;
}

bool read_fault(ScenarioLine& line, AirScript& script) {
    for (const FaultWord& known : fault_words) {
        if (!line.take(known.word)) {
            continue;
        }
        AirEvent event;
        event.fault = known.fault;
        if (known.takes_number) {
            const auto number = line.take_number();
            if (!number) {
                return false;
            }
            event.number = *number;
        }
        event.scans = line.take_times().value_or(Times{});
        script.events.push_back(event);
        return true;
    }
    return false;
}

} // namespace

bool read_air(ScenarioLine& line, AirScript& script) {
    script.spoken = true;
    if (line.take("hears")) {
        return read_hears(line, script);
    }
    if (line.take("without")) {
        return read_without(line, script);
    }
    if (line.take("takes")) {
        return read_takes(line, script);
    }
    if (line.take("loses")) {
        return read_loses(line, script);
    }
    return read_fault(line, script);
}

} // namespace bench

// SPDX-License-Identifier: Apache-2.0
#include "phases.hpp"

#include <algorithm>
#include <span>

namespace wivex::report {

namespace {

constexpr std::array<std::string_view, phase_count + 1> phase_names{
    "module",    "driver", "mac",  "loopback", "session", "scan",       "associate", "find",
    "negotiate", "group",  "dhcp", "traffic",  "serve",   "disconnect", "removal",   "none"};

constexpr std::array<std::string_view, 8> mode_names{
    "unknown", "legacy-wlan", "p2p-device", "p2p-go", "p2p-client", "scan", "softap", "checks"};

constexpr std::array<std::string_view, 8> mode_titles{"unknown mode",  "legacy WLAN", "P2P device",
                                                      "autonomous GO", "P2P client",  "scan",
                                                      "softAP",        "checks only"};

constexpr std::array<std::string_view, 5> verdict_names{"none", "passed", "warned", "unfinished",
                                                        "failed"};

constexpr std::array<std::string_view, 4> outcome_names{"passed", "failed", "failed-uncounted",
                                                        "unfinished"};

constexpr std::array<std::string_view, 7> end_names{
    "open", "finished", "interrupted", "killed", "softap", "not-started", "broke-off"};

constexpr std::array<std::string_view, run_verdict_count> run_verdict_names{
    "passed", "failed", "interrupted", "unknown"};

constexpr std::array legacy_phases{Phase::scan, Phase::associate, Phase::dhcp, Phase::traffic,
                                   Phase::disconnect};
constexpr std::array device_phases{Phase::session, Phase::find, Phase::negotiate, Phase::group,
                                   Phase::removal};
constexpr std::array go_phases{Phase::session, Phase::group, Phase::serve};
constexpr std::array client_phases{Phase::session, Phase::find,    Phase::negotiate,
                                   Phase::dhcp,    Phase::traffic, Phase::removal};
constexpr std::array scan_phases{Phase::scan};

std::span<const Phase> phases_of(Mode mode) {
    switch (mode) {
    case Mode::legacy:
        return legacy_phases;
    case Mode::device:
        return device_phases;
    case Mode::go:
        return go_phases;
    case Mode::client:
        return client_phases;
    case Mode::scan:
        return scan_phases;
    default:
        return {};
    }
}

template <typename Names, typename Value>
std::string_view name_in(const Names& names, Value value) {
    const auto index = static_cast<std::size_t>(value);
    return index < names.size() ? names[index] : std::string_view("?");
}

} // namespace

std::string_view name_of(Phase phase) {
    return name_in(phase_names, phase);
}

std::string_view name_of(Mode mode) {
    return name_in(mode_names, mode);
}

std::string_view name_of(Verdict verdict) {
    return name_in(verdict_names, verdict);
}

std::string_view name_of(Outcome outcome) {
    return name_in(outcome_names, outcome);
}

std::string_view name_of(RunEnd end) {
    return name_in(end_names, end);
}

std::string_view name_of(RunVerdict verdict) {
    return name_in(run_verdict_names, verdict);
}

std::string_view title_of(Mode mode) {
    return name_in(mode_titles, mode);
}

Mode mode_of_option(char letter) {
    switch (letter) {
    case 'w':
        return Mode::legacy;
    case 'd':
        return Mode::device;
    case 'g':
        return Mode::go;
    case 'c':
        return Mode::client;
    case 'S':
        return Mode::scan;
    case 'A':
        return Mode::softap;
    default:
        return Mode::unknown;
    }
}

Phase phase_after(Mode mode, Phase phase) {
    const std::span<const Phase> order = phases_of(mode);
    const auto found = std::ranges::find(order, phase);
    if (found == order.end()) {
        return phase == Phase::module ? Phase::driver : order.empty() ? Phase::none : order.front();
    }
    const auto next = found + 1;
    return next == order.end() ? Phase::none : *next;
}

} // namespace wivex::report

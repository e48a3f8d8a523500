// SPDX-License-Identifier: Apache-2.0
#include "language/signal_plan.hpp"

#include "language/text.hpp"

#include <csignal>

namespace bench {

namespace {

std::optional<int> signal_number(std::string_view name) {
    if (name == "INT") {
        return SIGINT;
    }
    return name == "TERM" ? std::optional<int>(SIGTERM) : std::nullopt;
}

std::optional<int> milliseconds(std::string_view text) {
    return text.ends_with("ms") ? to_number(text.substr(0, text.size() - 2)) : std::nullopt;
}

// Cuts what stands behind the last `separator` off `text`.
std::string_view cut_behind(std::string_view& text, char separator) {
    const std::size_t at = text.rfind(separator);
    if (at == std::string_view::npos) {
        return {};
    }
    const std::string_view tail = text.substr(at + 1);
    text = text.substr(0, at);
    return tail;
}

bool read_moment(std::string_view moment, PlannedSignal& signal) {
    if (const std::string_view delay = cut_behind(moment, '+'); !delay.empty()) {
        const auto value = milliseconds(delay);
        if (!value) {
            return false;
        }
        signal.delay_ms = *value;
    }
    constexpr std::string_view command = "command:";
    constexpr std::string_view child = "child:";
    if (moment.starts_with(child)) {
        signal.child = moment.substr(child.size());
        return !signal.child.empty();
    }
    if (!moment.starts_with(command)) {
        return false;
    }
    moment.remove_prefix(command.size());
    if (const std::string_view count = cut_behind(moment, '#'); !count.empty()) {
        const auto value = to_number(count);
        if (!value) {
            return false;
        }
        signal.command_count = *value;
    }
    signal.command = moment;
    return !signal.command.empty();
}

} // namespace

std::optional<PlannedSignal> parse_signal(std::string_view text) {
    const std::size_t at = text.find('@');
    const auto number = signal_number(text.substr(0, at));
    if (!number || at == std::string_view::npos) {
        return std::nullopt;
    }
    PlannedSignal signal;
    signal.number = *number;
    const std::string_view moment = text.substr(at + 1);
    if (const auto delay = milliseconds(moment)) {
        signal.delay_ms = *delay;
        return signal;
    }
    return read_moment(moment, signal) ? std::optional<PlannedSignal>(signal) : std::nullopt;
}

} // namespace bench

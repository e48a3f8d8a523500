// SPDX-License-Identifier: Apache-2.0
#include "model/limit_text.hpp"

#include "common/printable.hpp"
#include "common/words.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>

namespace wivex::report {

namespace {

constexpr double largest_value = 1e9;
constexpr std::size_t longest_quote = 60;

constexpr auto statistics =
    std::to_array({Statistic::median, Statistic::mean, Statistic::percentile_95,
                   Statistic::percentile_99, Statistic::least, Statistic::most});

struct Unit {
    std::string_view name;
    std::string_view base;
    double factor;
};

constexpr auto units = std::to_array<Unit>({
    {"Mbit/s", "Mbit/s", 1},
    {"s", "s", 1},
    {"ms", "s", 0.001},
    {"dBm", "dBm", 1},
});

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r";
    const std::size_t begin = text.find_first_not_of(blanks);
    if (begin == std::string_view::npos) {
        return {};
    }
    return text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
}

std::string quoted(std::string_view text) {
    return "\"" + printable(text, longest_quote) + "\"";
}

std::string known_names() {
    std::string names = "throughput, iteration, signal, failures, warnings";
    for (const Phase phase : all_phases()) {
        names += ", " + std::string(name_of(phase));
    }
    return names;
}

bool take_figure(Limit& limit, std::string_view name) {
    for (const Figure figure : {Figure::throughput, Figure::iteration, Figure::signal,
                                Figure::failures, Figure::warnings}) {
        limit.figure = figure;
        if (figure_name(limit) == name) {
            return true;
        }
    }
    limit.figure = Figure::phase;
    for (const Phase phase : all_phases()) {
        limit.phase = phase;
        if (name_of(phase) == name) {
            return true;
        }
    }
    return false;
}

// "associate.p95".
std::string take_name(Limit& limit, std::string_view name) {
    const std::size_t dot = name.find('.');
    if (!take_figure(limit, name.substr(0, dot))) {
        return "unknown name " + quoted(name.substr(0, dot)) + "; known are " + known_names();
    }
    if (dot == std::string_view::npos) {
        return {};
    }
    const std::string_view suffix = name.substr(dot);
    const auto* const found = std::ranges::find(statistics, suffix, suffix_of);
    if (found == statistics.end()) {
        return "unknown statistic " + quoted(suffix.substr(1)) +
               "; known are median, mean, p95, p99, least, most";
    }
    if (limit.is_count()) {
        return std::string(figure_name(limit)) + " are counted, and have no statistic";
    }
    limit.statistic = *found;
    return {};
}

std::string take_unit(Limit& limit, std::string_view name) {
    if (name.empty()) {
        return {};
    }
    const std::string_view base = unit_of(limit);
    const auto* const found = std::ranges::find(units, name, &Unit::name);
    if (found == units.end() || found->base != base) {
        return "wrong unit " + quoted(name) + ": " + std::string(figure_name(limit)) +
               (base.empty() ? " has none" : " is told in " + std::string(base));
    }
    limit.value *= found->factor;
    return {};
}

// A console tells no more: a finer limit would be judged as another one.
std::string round_value(Limit& limit) {
    constexpr double noise = 1e-9;
    const double told = rounded(limit.value);
    if (std::fabs(told - limit.value) > noise) {
        return "three places behind the point are told, no more";
    }
    limit.value = told;
    return {};
}

// "30 Mbit/s".
std::string take_value(Limit& limit, std::string_view text) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), limit.value,
                                              std::chars_format::fixed);
    if (error != std::errc() || !std::isfinite(limit.value)) {
        return "no number in " + quoted(text);
    }
    if (std::fabs(limit.value) > largest_value) {
        return "the number is too large";
    }
    if (limit.value < 0 && limit.figure != Figure::signal) {
        return std::string(figure_name(limit)) + " is never below 0";
    }
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    if (limit.is_count() && limit.value != std::floor(limit.value)) {
        return std::string(figure_name(limit)) + " are whole numbers";
    }
    std::string problem = take_unit(limit, trimmed(text));
    return problem.empty() ? round_value(limit) : problem;
}

std::string take_limit(Limit& limit, std::string_view text) {
    const std::size_t place = text.find_first_of("<>=");
    const std::string_view bound =
        place == std::string_view::npos ? std::string_view() : text.substr(place, 2);
    if (bound != ">=" && bound != "<=") {
        return "no >= or <= in it";
    }
    limit.bound = bound == ">=" ? Bound::at_least : Bound::at_most;
    std::string problem = take_name(limit, trimmed(text.substr(0, place)));
    return problem.empty() ? take_value(limit, trimmed(text.substr(place + 2))) : problem;
}

bool is_same(const Limit& one, const Limit& other) {
    return one.has_figure_of(other) && one.statistic == other.statistic;
}

// Two limits of the same number that no run can keep, or of which one says nothing.
bool contradicts(const Limit& one, const Limit& other) {
    if (!is_same(one, other)) {
        return false;
    }
    if (one.bound == other.bound) {
        return one.value != other.value;
    }
    const Limit& least = one.bound == Bound::at_least ? one : other;
    const Limit& most = one.bound == Bound::at_least ? other : one;
    return least.value > most.value;
}

} // namespace

std::string add_limit(std::vector<Limit>& limits, std::string_view text) {
    Limit limit;
    const std::string_view said = trimmed(text);
    const std::string problem = take_limit(limit, said);
    if (!problem.empty()) {
        return "limit " + quoted(said) + ": " + problem;
    }
    const auto other =
        std::ranges::find_if(limits, [&](const Limit& known) { return contradicts(limit, known); });
    if (other != limits.end()) {
        return "limit " + quoted(said) + " contradicts \"" + text_of(*other) + "\"";
    }
    const bool known = std::ranges::any_of(limits, [&](const Limit& kept) {
        return is_same(limit, kept) && limit.bound == kept.bound;
    });
    if (known) {
        return {};
    }
    if (limits.size() == most_limits) {
        return "more than " + std::to_string(most_limits) + " limits";
    }
    limits.push_back(limit);
    return {};
}

std::string add_limits_of_file(std::vector<Limit>& limits, std::string_view content,
                               std::string_view name) {
    std::size_t number = 0;
    bool any = false;
    while (!content.empty()) {
        const std::string_view whole = content.substr(0, content.find('\n'));
        content.remove_prefix(std::min(content.size(), whole.size() + 1));
        ++number;
        const std::string_view line = trimmed(whole.substr(0, whole.find('#')));
        if (line.empty()) {
            continue;
        }
        any = true;
        const std::string problem = add_limit(limits, line);
        if (!problem.empty()) {
            return printable(name) + ", line " + std::to_string(number) + ": " + problem;
        }
    }
    return any ? "" : printable(name) + " holds no limit";
}

} // namespace wivex::report

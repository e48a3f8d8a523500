// SPDX-License-Identifier: Apache-2.0
#include "model/limits.hpp"

#include "common/words.hpp"

#include <array>

namespace wivex::report {

namespace {

constexpr std::array<std::string_view, limit_verdict_count> verdict_names{"within", "unknown",
                                                                          "outside"};

struct FigureRow {
    std::string_view name;
    std::string_view unit;
};

// In the order of `Figure`. A phase has its own name.
constexpr std::array<FigureRow, 6> figures{{
    {"throughput", "Mbit/s"},
    {"", "s"},
    {"iteration", "s"},
    {"signal", "dBm"},
    {"failures", ""},
    {"warnings", ""},
}};

struct StatisticRow {
    std::string_view suffix;
    double part;
};

// In the order of `Statistic`.
constexpr std::array<StatisticRow, 7> statistics{{
    {"", 0},
    {".median", 0.5},
    {".mean", 0},
    {".p95", 0.95},
    {".p99", 0.99},
    {".least", 0},
    {".most", 0},
}};

} // namespace

std::string_view name_of(LimitVerdict verdict) {
    return verdict_names.at(static_cast<std::size_t>(verdict));
}

bool Limit::is_broken_by(double measured) const {
    const double shown = rounded(measured);
    return bound == Bound::at_least ? shown < value : shown > value;
}

std::string_view figure_name(const Limit& limit) {
    return limit.figure == Figure::phase ? name_of(limit.phase)
                                         : figures.at(static_cast<std::size_t>(limit.figure)).name;
}

std::string name_of(const Limit& limit) {
    return std::string(figure_name(limit)) + std::string(suffix_of(limit.statistic));
}

std::string_view operator_of(const Limit& limit) {
    return limit.bound == Bound::at_least ? ">=" : "<=";
}

std::string_view unit_of(const Limit& limit) {
    return figures.at(static_cast<std::size_t>(limit.figure)).unit;
}

std::string text_of(const Limit& limit) {
    const std::string_view unit = unit_of(limit);
    return name_of(limit) + " " + std::string(operator_of(limit)) + " " + exact_text(limit.value) +
           (unit.empty() ? "" : " " + std::string(unit));
}

std::string_view suffix_of(Statistic statistic) {
    return statistics.at(static_cast<std::size_t>(statistic)).suffix;
}

double part_of(Statistic statistic) {
    return statistics.at(static_cast<std::size_t>(statistic)).part;
}

} // namespace wivex::report

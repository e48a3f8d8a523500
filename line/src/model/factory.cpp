// SPDX-License-Identifier: Apache-2.0
#include "model/factory.hpp"

#include <algorithm>

namespace wivex::line {

namespace {

// Clocks of stations differ by minutes; what lies further ahead has a wrong date.
constexpr Moment clock_tolerance = 600;
constexpr std::size_t most_stations = 200;
constexpr std::size_t most_causes = 200;
constexpr const char* other_stations = "(other stations)";
constexpr const char* other_causes = "other-causes";

ListEntry entry_of(std::int64_t unit_no, const Attempt& attempt) {
    return {unit_no, attempt.began.value_or(0), attempt.passed, attempt.cause, attempt.station};
}

template <typename Map>
typename Map::mapped_type& bounded(Map& map, const std::string& key, std::size_t most,
                                   const char* rest) {
    return map.contains(key) || map.size() < most ? map[key] : map[rest];
}

} // namespace

Factory::Factory(Moment now, std::size_t newest_units)
    : now_(now), newest_units_(newest_units), periods_{{{"Today", "today", day_begin(now, 0)},
                                                        {"7 days", "week", day_begin(now, 6)},
                                                        {"30 days", "month", day_begin(now, 29)}}} {
    for (int back = 0; back < 30; ++back) {
        days_[day_begin(now, back)];
    }
}

bool Factory::is_in(const std::optional<Moment>& began, Moment begin) const {
    return began && *began >= begin && *began <= now_ + clock_tolerance;
}

void Factory::take(std::int64_t unit_no, std::span<const RunKey> runs) {
    const std::vector<Attempt> attempts = attempts_of(runs);
    const Attempt first = first_attempt(attempts);
    ++units_;
    Moment last = 0;
    for (const RunKey& run : runs) {
        ++runs_;
        undated_ += run.began ? 0 : 1;
        const bool ahead = run.began && *run.began > now_ + clock_tolerance;
        future_ += ahead ? 1 : 0;
        last = ahead ? last : std::max(last, run.began.value_or(0));
    }
    for (Period& period : periods_) {
        take_period(period, unit_no, runs, attempts, first);
    }
    if (is_in(first.began, periods_.back().begin)) {
        take_first(unit_no, first);
    }
    if (!first.began || is_in(first.began, 0)) {
        newest_.push_back({std::max(last, first.began.value_or(0)), unit_no, first.passed});
        if (newest_.size() >= 2 * newest_units_) {
            cut_newest();
        }
    }
}

void Factory::take_period(Period& period, std::int64_t unit_no, std::span<const RunKey> runs,
                          std::span<const Attempt> attempts, const Attempt& first) {
    const auto list = [&](const char* kind, const char* title, const Attempt& attempt) {
        lists_.add(period.label + "-" + kind, period.name + ": " + title,
                   entry_of(unit_no, attempt));
    };
    const Attempt* present = nullptr;
    for (const Attempt& attempt : attempts) {
        if (!is_in(attempt.began, period.begin)) {
            continue;
        }
        present = &attempt;
        const bool again = &attempt != &attempts.front() || attempt.number.value_or(1) != 1;
        if (again) {
            ++period.retests;
            list("retests", "retests", attempt);
        }
    }
    for (const RunKey& run : runs) {
        period.runs += is_in(run.began, period.begin) ? 1 : 0;
    }
    if (present != nullptr) {
        ++period.units;
        list("units", "units with an attempt", *present);
    }
    if (is_in(first.began, period.begin)) {
        period.first.add(first.passed);
        period.last.add(attempts.back().passed);
        if (!first.passed) {
            list("first", "units that did not pass at first", first);
        }
        if (!attempts.back().passed) {
            list("last", "units that have not passed so far", attempts.back());
        }
    }
}

void Factory::take_first(std::int64_t unit_no, const Attempt& first) {
    const Moment day = teller_.day_of(*first.began);
    const auto found = days_.find(day);
    if (found != days_.end()) {
        found->second.first.add(first.passed);
    }
    const std::string name = first.station.empty() ? "(no station)" : first.station;
    StationCounts& station = bounded(stations_, name, most_stations, other_stations);
    ++station.firsts;
    if (first.passed) {
        return;
    }
    ++bounded(station.causes, first.cause, most_causes, other_causes);
    const std::int64_t number =
        labels_.try_emplace(name, static_cast<std::int64_t>(labels_.size()) + 1).first->second;
    const ListEntry entry = entry_of(unit_no, first);
    lists_.add("day-" + day_text(day), day_text(day) + ": units that did not pass at first", entry);
    lists_.add("cause-" + first.cause, first.cause + ": first attempts that it ended", entry);
    lists_.add("station-" + std::to_string(number) + "-" + first.cause,
               name + ", " + first.cause + ": first attempts that it ended", entry);
}

void Factory::cut_newest() {
    std::ranges::sort(newest_, std::greater(),
                      [](const Newest& unit) { return std::pair(unit.began, unit.unit_no); });
    newest_.resize(std::min(newest_.size(), newest_units_));
}

std::string Factory::label_of(const std::string& station) const {
    const auto found = labels_.find(station);
    return found == labels_.end() ? "" : "station-" + std::to_string(found->second);
}

void Factory::compare_stations() {
    std::map<std::string, std::int64_t> totals;
    std::int64_t firsts = 0;
    for (const auto& [name, station] : stations_) {
        firsts += station.firsts;
        for (const auto& [cause, count] : station.causes) {
            totals[cause] += count;
        }
    }
    std::vector<double> chances;
    for (const auto& [name, station] : stations_) {
        for (const auto& [cause, total] : totals) {
            const auto found = station.causes.find(cause);
            const std::int64_t count = found == station.causes.end() ? 0 : found->second;
            const double chance = chance_of_more(count, station.firsts, total, firsts);
            chances.push_back(chance);
            comparisons_.push_back({name, cause, count, station.firsts, chance, false});
        }
    }
    const std::vector<bool> marks = stands(chances);
    for (std::size_t i = 0; i < marks.size(); ++i) {
        comparisons_[i].marked = marks[i];
    }
    pareto_.assign(totals.begin(), totals.end());
    std::ranges::stable_sort(pareto_, std::greater(), [](const auto& row) { return row.second; });
}

void Factory::finish() {
    cut_newest();
    lists_.finish();
    compare_stations();
    std::set<std::int64_t> taken;
    for (const Newest& unit : newest_) {
        if (taken.insert(unit.unit_no).second) {
            shown_units_.push_back(unit.unit_no);
        }
    }
    for (const auto& [name, list] : lists_.all()) {
        for (const ListEntry& entry : list.entries) {
            if (!entry.passed && shown_units_.size() < 2 * newest_units_ &&
                taken.insert(entry.unit_no).second) {
                shown_units_.push_back(entry.unit_no);
            }
        }
    }
}

Share Factory::newest_first(std::size_t units) const {
    Share share;
    for (std::size_t i = 0; i < std::min(units, newest_.size()); ++i) {
        share.add(newest_[i].passed);
    }
    return share;
}

} // namespace wivex::line

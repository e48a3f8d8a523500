// SPDX-License-Identifier: Apache-2.0
// What the units of a line tell together: yields, causes, stations, days. It takes one unit after
// the other and keeps only counts and the newest of each list.
#pragma once

#include "model/attempts.hpp"
#include "model/lists.hpp"
#include "model/statistics.hpp"

#include <array>
#include <map>
#include <set>

namespace wivex::line {

/// The days up to now, the present one included.
struct Period {
    std::string name;  ///< "Today"
    std::string label; ///< "today", in file names
    Moment begin = 0;
    std::int64_t units = 0; ///< with an attempt in it
    std::int64_t runs = 0;
    std::int64_t retests = 0;
    Share first{}; ///< of the units whose first attempt began in it: those that passed it
    Share last{};  ///< of the same units: those whose last attempt so far has passed
};

struct Day {
    Share first;
};

struct StationCounts {
    /// First attempts in the last 30 days.
    std::int64_t firsts = 0;
    std::map<std::string, std::int64_t> causes;
};

/// A station and a cause, compared with all other stations.
struct StationCause {
    std::string station;
    std::string cause;
    std::int64_t count = 0;
    std::int64_t firsts = 0;
    double chance = 1;
    bool marked = false; ///< more often than chance explains
};

class Factory {
public:
    explicit Factory(Moment now, std::size_t newest_units);

    void take(std::int64_t unit_no, std::span<const RunKey> runs);
    void finish();

    Moment now() const {
        return now_;
    }
    const std::array<Period, 3>& periods() const {
        return periods_;
    }
    /// By the begin of the day, the last 30.
    const std::map<Moment, Day>& days() const {
        return days_;
    }
    /// Causes that ended first attempts in the last 30 days, the most frequent first.
    const std::vector<std::pair<std::string, std::int64_t>>& pareto() const {
        return pareto_;
    }
    const std::map<std::string, StationCounts>& stations() const {
        return stations_;
    }
    const std::vector<StationCause>& comparisons() const {
        return comparisons_;
    }
    /// "station-3" for links; the same for the same set of stations.
    std::string label_of(const std::string& station) const;
    const Lists& lists() const {
        return lists_;
    }
    /// The units with the newest runs, newest first, and those in the lists.
    const std::vector<std::int64_t>& shown_units() const {
        return shown_units_;
    }
    /// First-pass yield of the newest units, at most so many.
    Share newest_first(std::size_t units) const;

    std::int64_t units() const {
        return units_;
    }
    std::int64_t runs() const {
        return runs_;
    }
    std::int64_t runs_without_date() const {
        return undated_;
    }
    std::int64_t runs_in_the_future() const {
        return future_;
    }

private:
    struct Newest {
        Moment began;
        std::int64_t unit_no;
        bool passed;
    };

    void take_period(Period& period, std::int64_t unit_no, std::span<const RunKey> runs,
                     std::span<const Attempt> attempts, const Attempt& first);
    void take_first(std::int64_t unit_no, const Attempt& first);
    bool is_in(const std::optional<Moment>& began, Moment begin) const;
    void compare_stations();
    void cut_newest();

    Moment now_;
    std::size_t newest_units_;
    std::array<Period, 3> periods_;
    std::map<Moment, Day> days_;
    std::map<std::string, StationCounts> stations_;
    std::map<std::string, std::int64_t> labels_;
    std::vector<StationCause> comparisons_;
    std::vector<std::pair<std::string, std::int64_t>> pareto_;
    Lists lists_;
    std::vector<Newest> newest_;
    std::vector<std::int64_t> shown_units_;
    DayTeller teller_;
    std::int64_t units_ = 0;
    std::int64_t runs_ = 0;
    std::int64_t undated_ = 0;
    std::int64_t future_ = 0;
};

} // namespace wivex::line

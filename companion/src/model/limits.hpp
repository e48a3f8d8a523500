// SPDX-License-Identifier: Apache-2.0
// What a figure of a run may be at least or at most, as a production line or an engineer sets it,
// and what a run has shown of it so far. Of bounded size: the counts are exact.
#pragma once

#include "model/phases.hpp"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace wivex::report {

enum class Figure : std::uint8_t { throughput, phase, iteration, signal, failures, warnings };

/// Of the values of all iterations; `each`: every iteration is judged by itself.
enum class Statistic : std::uint8_t {
    each,
    median,
    mean,
    percentile_95,
    percentile_99,
    least,
    most
};

enum class Bound : std::uint8_t { at_least, at_most };

/// In the order of weight: the worst of several holds. Without a value a limit is `unknown`.
enum class LimitVerdict : std::uint8_t { within, unknown, outside };

constexpr std::size_t limit_verdict_count = 3;

std::string_view name_of(LimitVerdict verdict);

struct Limit {
    Figure figure = Figure::throughput;
    /// Of `Figure::phase`.
    Phase phase = Phase::none;
    Statistic statistic = Statistic::each;
    Bound bound = Bound::at_least;
    /// In Mbit/s, seconds or dBm; failures and warnings are counted in iterations.
    double value = 0;

    /// Whether both are about the same number.
    bool has_figure_of(const Limit& other) const {
        return figure == other.figure && phase == other.phase;
    }
    bool is_broken_by(double measured) const;
    /// Its figure is a time, which a console may not tell.
    bool is_of_time() const {
        return figure == Figure::phase || figure == Figure::iteration;
    }
    /// Its figure is a number of iterations.
    bool is_count() const {
        return figure == Figure::failures || figure == Figure::warnings;
    }
};

/// "throughput", "associate".
std::string_view figure_name(const Limit& limit);

/// "associate.p95".
std::string name_of(const Limit& limit);

/// ">=" or "<=".
std::string_view operator_of(const Limit& limit);

/// "Mbit/s", "s", "dBm", or nothing.
std::string_view unit_of(const Limit& limit);

/// "associate.p95 <= 4 s".
std::string text_of(const Limit& limit);

/// Behind the name of a figure: ".p95"; empty for `each`.
std::string_view suffix_of(Statistic statistic);

/// Of how many of its values the statistic is not above; 0 when it is no quantile.
double part_of(Statistic statistic);

/// What the iterations of a run have shown of a limit.
struct LimitTally {
    static constexpr std::size_t most_named = 100;

    Limit limit;
    /// Iterations with a value.
    std::uint32_t judged = 0;
    /// Iterations that did not fail and have none.
    std::uint32_t missing = 0;
    /// Iterations whose value breaks the limit, and the first of them.
    std::uint32_t broken = 0;
    std::vector<std::uint32_t> named;

    void add_broken(std::uint32_t iteration) {
        ++broken;
        if (named.size() < most_named) {
            named.push_back(iteration);
        }
    }
    /// The times that it has seen were none.
    void forget() {
        missing += judged;
        judged = 0;
        broken = 0;
        named.clear();
    }
};

/// The verdict on one limit.
struct LimitResult {
    Limit limit;
    LimitVerdict verdict = LimitVerdict::unknown;
    /// Of the statistic; with `each` the worst one. Nothing when nothing was measured.
    std::optional<double> value;
    /// In words: why it is not known.
    std::string why;
    /// Outside: how many iterations break it, and the first of them.
    std::uint32_t broken = 0;
    std::vector<std::uint32_t> iterations;
};

} // namespace wivex::report

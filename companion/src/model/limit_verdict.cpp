// SPDX-License-Identifier: Apache-2.0
#include "model/limit_verdict.hpp"

#include "common/words.hpp"
#include "model/verdict.hpp"

#include <algorithm>
#include <cmath>

namespace wivex::report {

namespace {

std::optional<float> if_known(float value) {
    return std::isfinite(value) ? std::optional(value) : std::nullopt;
}

double count_of(const Run& run, Figure figure) {
    if (figure == Figure::warnings) {
        return run.warned;
    }
    // When iterations were split wrongly, it is unclear whose failure it was.
    return std::max(run.failed(), run.all_failures() != 0 ? 1U : 0U);
}

double statistic_of(const Series& series, const Limit& limit) {
    switch (limit.statistic) {
    case Statistic::median:
        return series.median();
    case Statistic::mean:
        return series.mean();
    case Statistic::percentile_95:
    case Statistic::percentile_99:
        return series.quantile(part_of(limit.statistic));
    case Statistic::least:
        return series.least().value;
    case Statistic::most:
        return series.most().value;
    default:
        return limit.bound == Bound::at_least ? series.least().value : series.most().value;
    }
}

std::optional<double> value_of(const Run& run, const Limit& limit) {
    if (limit.is_count()) {
        return count_of(run, limit.figure);
    }
    const Series& series = series_of(run, limit);
    return series.empty() ? std::nullopt : std::optional(statistic_of(series, limit));
}

// Whether the quantile of all values breaks its limit, by how many of them do.
bool is_quantile_broken(const LimitTally& tally) {
    const double part = part_of(tally.limit.statistic);
    const auto rank = static_cast<std::uint32_t>(std::ceil(part * tally.judged));
    return tally.limit.bound == Bound::at_most ? tally.broken > tally.judged - rank
                                               : tally.broken >= rank;
}

// Counts are exact where only a part of the values is kept.
bool is_broken(const Run& run, const LimitTally& tally, double value) {
    const Limit& limit = tally.limit;
    const bool by_count =
        !limit.is_count() && part_of(limit.statistic) != 0 && !series_of(run, limit).keeps_all();
    return by_count ? is_quantile_broken(tally) : limit.is_broken_by(value);
}

std::string why_unknown(const Run& run, const LimitTally& tally, bool has_value) {
    if (!has_value && tally.limit.is_of_time() && run.times == TimeSource::none) {
        return "the console has no times";
    }
    if (!has_value) {
        return "nothing was measured";
    }
    if (tally.missing != 0) {
        return iterations_text(tally.missing) + " without a value";
    }
    return "the console does not show the whole run";
}

LimitResult judge_limit(const Run& run, const LimitTally& tally, bool whole) {
    LimitResult result;
    result.limit = tally.limit;
    result.value = value_of(run, tally.limit);
    if (result.value && is_broken(run, tally, *result.value)) {
        result.verdict = LimitVerdict::outside;
        result.broken = tally.broken;
        result.iterations = tally.named;
    } else if (result.value && whole && tally.missing == 0) {
        result.verdict = LimitVerdict::within;
    } else {
        result.why = why_unknown(run, tally, result.value.has_value());
    }
    return result;
}

// A limit of which no run tells anything.
std::vector<LimitResult> without_run(const std::vector<Limit>& limits) {
    std::vector<LimitResult> results;
    for (const Limit& limit : limits) {
        results.emplace_back().limit = limit;
        results.back().why = "there is no run";
    }
    return results;
}

bool breaks(const Limit& limit, const Iteration& iteration) {
    if (limit.is_count()) {
        return limit.figure == Figure::failures ? iteration.failed() : iteration.warned;
    }
    const std::optional<float> value = value_in(iteration, limit);
    return value && limit.is_broken_by(*value);
}

} // namespace

std::optional<float> value_in(const Iteration& iteration, const Limit& limit) {
    switch (limit.figure) {
    case Figure::throughput:
        return iteration.throughput < 0 ? std::nullopt : if_known(iteration.throughput);
    case Figure::phase: {
        const PhaseRecord& record = iteration.phase(limit.phase);
        return record.was_completed() ? if_known(record.seconds) : std::nullopt;
    }
    case Figure::iteration:
        return iteration.outcome == Outcome::unfinished ? std::nullopt
                                                        : if_known(iteration.seconds);
    case Figure::signal:
        return if_known(iteration.signal);
    default:
        return std::nullopt;
    }
}

void tally_limits(Run& run, const Iteration& iteration) {
    for (LimitTally& tally : run.limits) {
        if (breaks(tally.limit, iteration)) {
            tally.add_broken(iteration.number);
        }
        if (tally.limit.is_count()) {
            continue;
        }
        const bool measured = value_in(iteration, tally.limit).has_value();
        tally.judged += measured ? 1 : 0;
        tally.missing += measured || iteration.failed() ? 0 : 1;
    }
}

const Series& series_of(const Run& run, const Limit& limit) {
    switch (limit.figure) {
    case Figure::phase:
        return run.phase_series.at(index_of(limit.phase));
    case Figure::iteration:
        return run.iteration_series;
    case Figure::signal:
        return run.signal_series;
    default:
        return run.throughput_series;
    }
}

std::vector<LimitResult> judge_limits(const Run& run) {
    std::vector<LimitResult> results;
    if (run.limits.empty()) {
        return results;
    }
    const bool whole = judge(run).whole;
    for (const LimitTally& tally : run.limits) {
        results.push_back(judge_limit(run, tally, whole));
    }
    return results;
}

void keep_worse(std::vector<LimitResult>& results, const std::vector<LimitResult>& others) {
    if (results.empty()) {
        results = others;
        return;
    }
    const std::size_t both = std::min(results.size(), others.size());
    for (std::size_t i = 0; i < both; ++i) {
        if (others[i].verdict > results[i].verdict) {
            results[i] = others[i];
        }
    }
}

std::vector<LimitResult> judge_limits(const Log& log) {
    if (log.runs.empty()) {
        return without_run(log.limits);
    }
    std::vector<LimitResult> results = log.dropped_limits;
    for (const Run& run : log.runs) {
        keep_worse(results, judge_limits(run));
    }
    return results;
}

std::optional<LimitVerdict> worst_of(const std::vector<LimitResult>& results) {
    if (results.empty()) {
        return {};
    }
    return std::ranges::max_element(results, {}, &LimitResult::verdict)->verdict;
}

bool are_kept(const std::vector<LimitResult>& results) {
    return worst_of(results).value_or(LimitVerdict::within) == LimitVerdict::within;
}

std::vector<Limit> broken_by(const Run& run, const Iteration& iteration) {
    std::vector<Limit> limits;
    for (const LimitTally& tally : run.limits) {
        if (tally.limit.statistic == Statistic::each && !tally.limit.is_count() &&
            breaks(tally.limit, iteration)) {
            limits.push_back(tally.limit);
        }
    }
    return limits;
}

} // namespace wivex::report

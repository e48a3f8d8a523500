// SPDX-License-Identifier: Apache-2.0
#include "writers/json_figures.hpp"

#include "common/words.hpp"
#include "model/histogram.hpp"
#include "model/limit_verdict.hpp"

#include <cmath>

namespace wivex::report {

namespace {

Json trend_json(const Trend& trend) {
    if (!trend.known) {
        return nullptr;
    }
    return {{"z", rounded(trend.z)},
            {"change", rounded(trend.change)},
            {"share", rounded(trend.share)},
            {"significant", trend.is_significant()},
            {"drift", trend.is_drift()}};
}

Json histogram_json(const Series& series) {
    Json list = Json::array();
    for (const Bin& bin : histogram_of(series)) {
        list.push_back({{"from", bin.from}, {"to", bin.to}, {"count", bin.count}});
    }
    return list;
}

void add_worst(Json& list, const Run& run, std::string_view figure, const WorstList& worst) {
    for (const Sample& sample : worst.samples()) {
        const Excerpt* const excerpt = run.worst.excerpt_of(sample.iteration);
        list.push_back(
            {{"figure", figure},
             {"iteration", sample.iteration},
             {"value", rounded(sample.value)},
             {"first_line", excerpt == nullptr ? Json(nullptr) : Json(excerpt->first_line)},
             {"last_line", excerpt == nullptr ? Json(nullptr) : Json(excerpt->last_line)}});
    }
}

} // namespace

Json text_or_null(const std::string& text) {
    return text.empty() ? Json(nullptr) : Json(text);
}

Json number_or_null(double value) {
    return std::isnan(value) ? Json(nullptr) : Json(rounded(value));
}

Json spread_json(const Spread& values) {
    if (values.count == 0) {
        return nullptr;
    }
    return {{"count", values.count},
            {"least", rounded(values.least)},
            {"mean", rounded(values.mean())},
            {"most", rounded(values.most)}};
}

Json distribution_json(const Series& series) {
    if (series.empty()) {
        return nullptr;
    }
    return {{"median", rounded(series.median())},
            {"percentile_95", rounded(series.quantile(part_of(Statistic::percentile_95)))},
            {"percentile_99", rounded(series.quantile(part_of(Statistic::percentile_99)))},
            {"exact", series.keeps_all()},
            {"histogram", histogram_json(series)},
            {"least_iteration", series.least().iteration},
            {"most_iteration", series.most().iteration},
            {"trend", trend_json(series.trend())}};
}

Json limits_json(const std::vector<LimitResult>& results) {
    Json list = Json::array();
    for (const LimitResult& result : results) {
        const std::string_view unit = unit_of(result.limit);
        list.push_back({{"name", name_of(result.limit)},
                        {"operator", operator_of(result.limit)},
                        {"limit", result.limit.value},
                        {"unit", unit.empty() ? Json(nullptr) : Json(unit)},
                        {"value", result.value ? Json(rounded(*result.value)) : Json(nullptr)},
                        {"verdict", name_of(result.verdict)},
                        {"why", result.why.empty() ? Json(nullptr) : Json(result.why)},
                        {"broken", result.broken},
                        {"iterations", result.iterations}});
    }
    return list;
}

Json limits_verdict_json(const std::vector<LimitResult>& results) {
    const auto verdict = worst_of(results);
    return verdict ? Json(name_of(*verdict)) : Json(nullptr);
}

Json worst_iterations_json(const Run& run) {
    Json list = Json::array();
    add_worst(list, run, "throughput", run.worst.throughput);
    add_worst(list, run, "signal", run.worst.signal);
    add_worst(list, run, "iteration", run.worst.iteration);
    for (const Phase phase : all_phases()) {
        add_worst(list, run, name_of(phase), run.worst.phases.at(index_of(phase)));
    }
    return list;
}

} // namespace wivex::report

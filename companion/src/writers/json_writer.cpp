// SPDX-License-Identifier: Apache-2.0
#include "writers/json_writer.hpp"

#include "common/words.hpp"
#include "model/advice.hpp"
#include "model/limit_verdict.hpp"
#include "model/test_cases.hpp"
#include "model/verdict.hpp"
#include "model/weak_passes.hpp"
#include "writers/json_figures.hpp"
#include "writers/json_identity.hpp"

#include <nlohmann/json.hpp>

namespace wivex::report {

namespace {

// Of a number that is never 0 when it is known.
Json count_or_null(int value) {
    return value == 0 ? Json(nullptr) : Json(value);
}

Json device(const Device& known) {
    return {{"build", text_or_null(known.build)},
            {"config_file", text_or_null(known.config_file)},
            {"chip_type", count_or_null(known.chip_type)},
            {"vendor_id", text_or_null(known.vendor_id)},
            {"product_id", text_or_null(known.product_id)},
            {"mac_kernel", text_or_null(known.mac_kernel)},
            {"mac_chip", text_or_null(known.mac_chip)},
            {"address", text_or_null(known.address)}};
}

Json outcomes(const std::array<std::uint32_t, outcome_count>& counts) {
    Json object = Json::object();
    for (std::size_t i = 0; i < counts.size(); ++i) {
        object[std::string(name_of(static_cast<Outcome>(i)))] = counts[i];
    }
    return object;
}

Json test_cases(const Run& run) {
    Json list = Json::array();
    for (const TestCaseCount& row : test_cases_of(run)) {
        list.push_back({{"number", row.number}, {"title", row.title}, {"failures", row.failures}});
    }
    return list;
}

Json phases(const Run& run) {
    Json list = Json::array();
    for (const Phase phase : all_phases()) {
        const auto& counts = run.verdicts.at(index_of(phase));
        if (counts == std::array<std::uint32_t, verdict_count>{}) {
            continue;
        }
        Json verdicts = Json::object();
        for (std::size_t i = 1; i < counts.size(); ++i) {
            verdicts[std::string(name_of(static_cast<Verdict>(i)))] = counts[i];
        }
        list.push_back({{"phase", name_of(phase)},
                        {"verdicts", verdicts},
                        {"seconds", spread_json(run.phase_seconds.at(index_of(phase)))},
                        {"distribution", distribution_json(run.phase_series.at(index_of(phase)))}});
    }
    return list;
}

Json sub_causes(const Run& run, Cause cause) {
    Json object = Json::object();
    for (const auto& [sub_cause, count] : run.behind(cause)) {
        object[std::string(id_of(sub_cause))] = count;
    }
    return object;
}

Json causes(const Run& run) {
    Json list = Json::array();
    for (const Cause cause : run.told_causes()) {
        const CauseCount& count = run.count(cause);
        const CauseRow& row = row_of(cause);
        const int test_case = test_case_of(cause, run.mode);
        list.push_back({{"cause", row.id},
                        {"words", row.words},
                        {"phase", name_of(row.phase)},
                        {"code", count_or_null(row.code)},
                        {"test_case", count_or_null(test_case)},
                        {"records_each", records_of(cause, run.mode)},
                        {"failures", count.failures},
                        {"warnings", count.warnings},
                        {"interrupted", count.unrecorded},
                        {"sub_causes", sub_causes(run, cause)},
                        {"look_first_at", advice_on(run, cause)},
                        {"first_iteration", count.first_iteration},
                        {"last_iteration", count.last_iteration}});
    }
    return list;
}

Json failures(const Run& run) {
    Json list = Json::array();
    for (const Failure& failure : run.failures) {
        list.push_back(
            {{"iteration", failure.iteration},
             {"phase", name_of(failure.phase)},
             {"cause", row_of(failure.cause).id},
             {"sub_cause",
              failure.sub_cause == SubCause::none ? Json(nullptr) : Json(id_of(failure.sub_cause))},
             {"warning", failure.warning},
             {"interrupted", failure.unrecorded},
             {"concluded", failure.concluded},
             {"line", failure.line},
             {"console", failure.lines},
             {"console_at", failure.shown_at}});
    }
    return list;
}

Json iterations(const Run& run) {
    Json list = Json::array();
    for (const Iteration& iteration : run.iterations) {
        Json parts = Json::object();
        for (const Phase phase : all_phases()) {
            const PhaseRecord& record = iteration.phase(phase);
            if (record.verdict != Verdict::none) {
                parts[std::string(name_of(phase))] = {{"verdict", name_of(record.verdict)},
                                                      {"seconds", number_or_null(record.seconds)}};
            }
        }
        list.push_back(
            {{"iteration", iteration.number},
             {"outcome", name_of(iteration.outcome)},
             {"warned", iteration.warned},
             {"start", number_or_null(iteration.start)},
             {"seconds", number_or_null(iteration.seconds)},
             {"throughput",
              iteration.throughput < 0 ? Json(nullptr) : Json(rounded(iteration.throughput))},
             {"signal", number_or_null(iteration.signal)},
             {"phases", parts}});
    }
    return list;
}

Json timeline(const Run& run) {
    Json list = Json::array();
    for (const Slice& slice : run.timeline.slices()) {
        Json seconds = Json::object();
        for (const Phase phase : all_phases()) {
            const Spread& values = slice.seconds.at(index_of(phase));
            if (values.count != 0) {
                seconds[std::string(name_of(phase))] = spread_json(values);
            }
        }
        list.push_back({{"first", slice.first},
                        {"iterations", slice.iterations},
                        {"outcomes", outcomes(slice.outcomes)},
                        {"warned", slice.warned},
                        {"throughput", spread_json(slice.throughput)},
                        {"signal", spread_json(slice.signal)},
                        {"seconds", seconds}});
    }
    return list;
}

Json access_points(const Run& run) {
    Json list = Json::array();
    for (const AccessPoint& point : run.access_points) {
        list.push_back({{"bssid", text_or_null(point.bssid)},
                        {"ssid", point.ssid},
                        {"frequency", count_or_null(point.frequency)},
                        {"times_seen", point.times_seen},
                        {"signal", spread_json(point.signal)}});
    }
    return list;
}

Json dropped_verdicts(const Log& log) {
    Json object = Json::object();
    for (std::size_t i = 0; i < run_verdict_count; ++i) {
        object[std::string(name_of(static_cast<RunVerdict>(i)))] = log.dropped_verdicts.at(i);
    }
    return object;
}

Json one_run(const Run& run) {
    const Judgement judgement = judge(run);
    const std::vector<LimitResult> limits = judge_limits(run);
    return {{"mode", name_of(run.mode)},
            {"end", name_of(run.end)},
            {"clean", judgement.is_green()},
            {"verdict", name_of(judgement.verdict)},
            {"verdict_words", verdict_sentence(run)},
            {"missing", judgement.missing},
            {"limits", limits_json(limits)},
            {"limits_verdict", limits_verdict_json(limits)},
            {"weak_passes", weak_passes(run)},
            {"unknown_tool_lines", run.evidence.unknown.count},
            {"times", name_of(run.times)},
            {"began", text_or_null(run.began)},
            {"seconds", number_or_null(run.seconds)},
            {"result_file", text_or_null(run.result_file)},
            {"result_file_written", run.result_written},
            {"device", device(run.device)},
            {"unknown_keys", run.unknown_keys},
            {"iterations_started", run.started},
            {"outcomes", outcomes(run.outcomes)},
            {"warned", run.warned},
            {"clients_served", run.clients_served},
            {"test_cases", test_cases(run)},
            {"failures_without_test_case", run.failures_without_test_case()},
            {"iteration_seconds", spread_json(run.iteration_seconds)},
            {"throughput", spread_json(run.throughput)},
            {"iteration_distribution", distribution_json(run.iteration_series)},
            {"throughput_distribution", distribution_json(run.throughput_series)},
            {"signal", spread_json(run.signal)},
            {"signal_distribution", distribution_json(run.signal_series)},
            {"worst_iterations", worst_iterations_json(run)},
            {"phases", phases(run)},
            {"causes", causes(run)},
            {"failures", failures(run)},
            {"iterations", iterations(run)},
            {"timeline", timeline(run)},
            {"access_points", access_points(run)},
            {"access_points_left_out", run.unlisted_access_points}};
}

} // namespace

std::string write_json(const Log& log) {
    const std::vector<LimitResult> limits = judge_limits(log);
    Json runs = Json::array();
    for (const Run& run : log.runs) {
        Json object = json_of_run(log, run);
        object.update(one_run(run));
        runs.push_back(std::move(object));
    }
    const Json document{
        {"format", "wivex-report"},
        {"version", json_format_version},
        {"identity", json_identity(log)},
        {"console",
         {{"bytes", log.bytes}, {"lines", log.lines}, {"unknown_lines", log.unknown_lines}}},
        {"verdict", name_of(judge(log))},
        {"verdict_words", verdict_sentence(log)},
        {"limits", limits_json(limits)},
        {"limits_verdict", limits_verdict_json(limits)},
        {"runs_left_out", log.dropped_runs},
        {"runs_left_out_verdicts", dropped_verdicts(log)},
        {"runs", std::move(runs)}};
    return document.dump(1, ' ', false, nlohmann::detail::error_handler_t::replace) + "\n";
}

} // namespace wivex::report

// SPDX-License-Identifier: Apache-2.0
#include "reader/run_fields.hpp"

#include "common/content_id.hpp"
#include "model/modes.hpp"
#include "reader/fields.hpp"

#include <algorithm>
#include <span>

namespace wivex::line {

namespace {

constexpr std::size_t most_parts = 256;

bool is_name(std::string_view text) {
    return !text.empty() && text.size() <= 48 && std::ranges::all_of(text, [](char letter) {
        return (letter >= 'a' && letter <= 'z') || (letter >= '0' && letter <= '9') ||
               letter == '-';
    });
}

bool is_one_of(std::string_view text, std::span<const std::string_view> allowed) {
    return std::ranges::find(allowed, text) != allowed.end();
}

constexpr auto verdicts =
    std::to_array<std::string_view>({"passed", "failed", "interrupted", "unknown"});
constexpr auto limit_verdicts = std::to_array<std::string_view>({"within", "outside", "unknown"});

Figure mean_of(Fields& fields, const std::string& spread, const std::string& where,
               std::string& problem) {
    return Fields(fields.object(spread.c_str()), where + "." + spread, problem).figure("mean");
}

std::string numbered(const std::string& list, std::size_t index) {
    return list + "[" + std::to_string(index) + "]";
}

void read_causes(const Json& list, const std::string& where, RunRecord& record,
                 std::string& problem) {
    for (std::size_t i = 0; i < std::min(list.size(), most_parts); ++i) {
        Fields fields(list[i], numbered(where, i), problem);
        CauseCount cause;
        cause.cause = fields.required_text("cause");
        cause.failures = fields.required_count("failures");
        cause.warnings = fields.count("warnings").value_or(0);
        cause.first_iteration = fields.count("first_iteration");
        const auto same = [&](const CauseCount& other) { return other.cause == cause.cause; };
        if (!is_name(cause.cause) || std::ranges::any_of(record.causes, same)) {
            fields.complain("cause", "is no name of a cause, or stands twice");
        }
        record.causes.push_back(std::move(cause));
    }
}

void read_limits(const Json& list, const std::string& where, RunRecord& record,
                 std::string& problem) {
    for (std::size_t i = 0; i < std::min(list.size(), most_parts); ++i) {
        Fields fields(list[i], numbered(where, i), problem);
        LimitResult result;
        result.name = fields.required_text("name");
        result.comparison = fields.required_text("operator");
        const Figure limit = fields.figure("limit");
        result.limit = limit.value_or(0);
        result.unit = fields.text("unit", 32);
        result.value = fields.figure("value");
        result.verdict = fields.required_text("verdict");
        const bool known = is_one_of(result.verdict, limit_verdicts) && limit &&
                           (result.comparison == ">=" || result.comparison == "<=");
        const auto same = [&](const LimitResult& other) {
            return other.name == result.name && other.comparison == result.comparison;
        };
        if (!known || std::ranges::any_of(record.limits, same)) {
            fields.complain("verdict", "belongs to no limit, or to one that stands twice");
        }
        record.limits.push_back(std::move(result));
    }
}

void read_phases(const Json& list, const std::string& where, RunRecord& record,
                 std::string& problem) {
    for (std::size_t i = 0; i < std::min(list.size(), most_parts); ++i) {
        Fields fields(list[i], numbered(where, i), problem);
        const std::string name = fields.required_text("phase");
        const Json& seconds = fields.object("seconds");
        for (const report::Phase phase : report::all_phases()) {
            if (report::name_of(phase) == name && !seconds.empty()) {
                record.phase_means.at(report::index_of(phase)) =
                    Fields(seconds, numbered(where, i) + ".seconds", problem).figure("mean");
            }
        }
    }
}

void read_counts(Fields& fields, const std::string& where, RunRecord& record,
                 std::string& problem) {
    record.iterations = fields.required_count("iterations_started");
    record.warned = fields.count("warned").value_or(0);
    Fields counts(fields.object("outcomes"), where + ".outcomes", problem);
    std::int64_t sum = 0;
    for (std::size_t i = 0; i < record.outcomes.size(); ++i) {
        const std::string name(report::name_of(static_cast<report::Outcome>(i)));
        record.outcomes.at(i) = counts.required_count(name.c_str());
        sum += record.outcomes.at(i);
    }
    if (sum > record.iterations) {
        fields.complain("outcomes", "are more than the iterations");
    }
}

// The cause of the first failure on the console; else the first that was counted or warned of.
Text told_cause(const Json& failures, const RunRecord& record) {
    for (const Json& failure : failures) {
        if (failure.is_object() && failure.value("warning", Json()) == Json(false) &&
            failure.value("cause", Json()).is_string()) {
            const std::string name = failure["cause"].get<std::string>();
            if (is_name(name)) {
                return name;
            }
        }
    }
    const auto counted = std::ranges::find_if(
        record.causes, [](const CauseCount& cause) { return cause.failures != 0; });
    if (counted != record.causes.end()) {
        return counted->cause;
    }
    const auto warned = std::ranges::find_if(
        record.causes, [](const CauseCount& cause) { return cause.warnings != 0; });
    return warned == record.causes.end() ? Text() : Text(warned->cause);
}

Text reason_of(const Json& run, const RunRecord& record, bool saved) {
    if (record.passed) {
        return {};
    }
    if (record.verdict == "passed") {
        return "limits-" + *record.limits_verdict;
    }
    if (record.verdict == "failed") {
        const auto failures = run.find("failures");
        Text cause = told_cause(failures == run.end() ? Json::array() : *failures, record);
        if (cause) {
            return cause;
        }
    }
    if (record.end != "finished") {
        return record.end;
    }
    return saved ? "not-judged" : "not-saved";
}

// A pass that something else in the report speaks against is no report to believe.
bool contradicts(const RunRecord& record, bool clean) {
    if (clean != (record.verdict == "passed")) {
        return true;
    }
    const bool ended =
        record.end == "finished" || (record.end == "interrupted" && record.mode == "p2p-go");
    const auto count = [&](report::Outcome outcome) {
        return record.outcomes.at(static_cast<std::size_t>(outcome));
    };
    const std::int64_t failed = count(report::Outcome::failed) + count(report::Outcome::uncounted);
    const bool failures = std::ranges::any_of(
        record.causes, [](const CauseCount& cause) { return cause.failures != 0; });
    const bool all_passed =
        record.mode == "p2p-go" || count(report::Outcome::passed) == record.iterations;
    return clean && (!ended || !all_passed || failed != 0 || failures || record.iterations == 0);
}

bool limits_agree(const RunRecord& record) {
    const bool broken = std::ranges::any_of(
        record.limits, [](const LimitResult& limit) { return limit.verdict != "within"; });
    return !record.limits_verdict ? record.limits.empty()
                                  : (*record.limits_verdict != "within" || !broken);
}

std::string content_of(const RunRecord& record, const Identity& identity) {
    Json facts = Json::array({identity.serial, identity.attempt.value_or(0), record.mode,
                              record.end, record.verdict, record.iterations, record.outcomes});
    for (const CauseCount& cause : record.causes) {
        facts.push_back({cause.cause, cause.failures, cause.warnings});
    }
    return content_id(facts.dump());
}

void read_macs(const Json& device, const std::string& where, RunRecord& record,
               std::string& problem) {
    Fields fields(device, where, problem);
    for (const char* const name : {"mac_kernel", "mac_chip"}) {
        const std::string mac = mac_of(fields.text(name).value_or(""));
        if (!mac.empty()) {
            record.macs.push_back(mac);
        }
    }
}

void read_times(Fields& fields, RunRecord& record) {
    record.began_at = fields.text("began_at", 40);
    record.ended_at = fields.text("ended_at", 40);
    record.began = record.began_at ? moment_of(*record.began_at) : std::nullopt;
    if (record.began_at && !record.began) {
        fields.complain("began_at", "is no date and time with its zone");
    }
    record.duration = fields.figure("seconds");
}

} // namespace

std::string mac_of(std::string_view text) {
    std::string mac;
    for (std::size_t i = 0; i < text.size() && text.size() == 17; ++i) {
        const char letter =
            text[i] >= 'A' && text[i] <= 'F' ? static_cast<char>(text[i] + 32) : text[i];
        const std::string_view allowed = i % 3 == 2 ? ":-" : "0123456789abcdef";
        if (allowed.find(letter) == std::string_view::npos) {
            return "";
        }
        mac += letter == '-' ? ':' : letter;
    }
    return mac;
}

RunRecord read_run(const Json& run, const std::string& where, const Identity& identity,
                   std::string& problem) {
    Fields fields(run, where, problem);
    RunRecord record;
    record.mode = fields.required_text("mode");
    record.end = fields.required_text("end");
    record.verdict = fields.required_text("verdict");
    record.limits_verdict = fields.text("limits_verdict");
    if (!is_one_of(record.verdict, verdicts) || !is_name(record.mode) || !is_name(record.end) ||
        (record.limits_verdict && !is_one_of(*record.limits_verdict, limit_verdicts))) {
        fields.complain("verdict", "is unknown, or mode, end or verdict on limits is");
    }
    read_times(fields, record);
    read_counts(fields, where, record, problem);
    read_causes(fields.list("causes"), where + ".causes", record, problem);
    read_limits(fields.list("limits"), where + ".limits", record, problem);
    read_phases(fields.list("phases"), where + ".phases", record, problem);
    read_macs(fields.object("device"), where + ".device", record, problem);
    record.throughput_mean = mean_of(fields, "throughput", where, problem);
    record.signal_mean = mean_of(fields, "signal", where, problem);
    Fields throughput(fields.object("throughput"), where + ".throughput", problem);
    record.throughput_least = throughput.figure("least");
    if (contradicts(record, fields.flag("clean")) || !limits_agree(record)) {
        fields.complain("verdict", "contradicts the rest of the report");
    }
    record.passed =
        record.verdict == "passed" && record.limits_verdict.value_or("within") == "within";
    if (!problem.empty()) {
        return record;
    }
    record.cause = reason_of(run, record, fields.flag("result_file_written"));
    record.content = content_of(record, identity);
    record.id = fields.text("id").value_or(content_id(run.dump() + "\n" + identity.serial));
    if (!is_content_id(record.id)) {
        fields.complain("id", "is no id of a run");
    }
    return record;
}

} // namespace wivex::line

// SPDX-License-Identifier: Apache-2.0
#include "reader/judging.hpp"

#include "common/content_id.hpp"
#include "common/moment.hpp"
#include "model/identity.hpp"
#include "reader/report_walk.hpp"

#include <algorithm>

namespace wivex::line {

namespace {

constexpr std::int64_t most_attempts = 1'000'000;

constexpr auto verdicts =
    std::to_array<std::string_view>({"passed", "failed", "interrupted", "unknown"});
constexpr auto limit_verdicts = std::to_array<std::string_view>({"within", "outside", "unknown"});

constexpr std::size_t mode = run_place("mode");
constexpr std::size_t end = run_place("run_end");
constexpr std::size_t verdict = run_place("verdict");
constexpr std::size_t limits_verdict = run_place("limits_verdict");
constexpr std::size_t iterations = run_place("iterations");
constexpr std::size_t iterations_passed = run_place("iterations_passed");
constexpr std::size_t iterations_unfinished = run_place("iterations_unfinished");

constexpr std::size_t cause_name = place_of(cause_columns, "cause");
constexpr std::size_t cause_failures = place_of(cause_columns, "failures");
constexpr std::size_t cause_warnings = place_of(cause_columns, "warnings");
constexpr std::size_t limit_name = place_of(limit_columns, "name");
constexpr std::size_t limit_comparison = place_of(limit_columns, "comparison");
constexpr std::size_t limit_verdict = place_of(limit_columns, "verdict");

bool is_one_of(std::string_view text, std::span<const std::string_view> allowed) {
    return std::ranges::find(allowed, text) != allowed.end();
}

bool is_set(const Row& evidence, std::size_t place) {
    return count_in(evidence[place]) == 1;
}

bool has_counted(const Row& cause) {
    return count_in(cause[cause_failures]) != 0;
}

std::string objection_to_words(const RunRecord& run) {
    const std::string& limits = run.text(limits_verdict);
    if (!is_one_of(run.text(verdict), verdicts) || !is_name(run.text(mode)) ||
        !is_name(run.text(end)) || (!limits.empty() && !is_one_of(limits, limit_verdicts))) {
        return "verdict is unknown, or mode, end or verdict on limits is";
    }
    const std::int64_t attempt = run.count(run_place("attempt"));
    const bool has_attempt = !is_null(run.row[run_place("attempt")]);
    return has_attempt && (attempt < 1 || attempt > most_attempts)
               ? "identity/attempt is no number from 1 on"
               : "";
}

// Of two rows with the same key one would be lost.
bool stands_twice(const std::vector<Row>& rows, std::size_t one, std::size_t other) {
    for (auto row = rows.begin(); row != rows.end(); ++row) {
        if (std::any_of(rows.begin(), row, [&](const Row& before) {
                return before[one] == (*row)[one] && before[other] == (*row)[other];
            })) {
            return true;
        }
    }
    return false;
}

std::string objection_to_parts(RunRecord& run) {
    for (Row& cause : run.causes) {
        if (is_null(cause[cause_warnings])) {
            cause[cause_warnings] = std::int64_t{0};
        }
        if (!is_name(text_in(cause[cause_name]))) {
            return "causes hold what is no name of a cause";
        }
    }
    for (const Row& limit : run.limits) {
        const std::string& comparison = text_in(limit[limit_comparison]);
        if (!is_one_of(text_in(limit[limit_verdict]), limit_verdicts) ||
            (comparison != ">=" && comparison != "<=")) {
            return "limits hold what is none";
        }
    }
    return stands_twice(run.causes, cause_name, cause_name) ||
                   stands_twice(run.limits, limit_name, limit_comparison)
               ? "a cause or a limit stands twice"
               : "";
}

// A pass that something else in the report speaks against is no report to believe.
bool contradicts(const RunRecord& run, bool clean) {
    if (clean != (run.text(verdict) == "passed")) {
        return true;
    }
    const bool serves = run.text(mode) == "p2p-go";
    const bool ended = run.text(end) == "finished" || (run.text(end) == "interrupted" && serves);
    const std::int64_t started = run.count(iterations);
    const std::int64_t passed = run.count(iterations_passed);
    const std::int64_t failed = run.count(run_place("iterations_failed")) +
                                run.count(run_place("iterations_failed_uncounted"));
    if (passed + failed + run.count(iterations_unfinished) > started) {
        return true;
    }
    const bool failures = std::ranges::any_of(run.causes, has_counted);
    return clean &&
           (!ended || (!serves && passed != started) || failed != 0 || failures || started == 0);
}

bool limits_agree(const RunRecord& run) {
    const bool broken = std::ranges::any_of(
        run.limits, [](const Row& limit) { return text_in(limit[limit_verdict]) != "within"; });
    return is_null(run.row[limits_verdict]) ? run.limits.empty()
                                            : (run.text(limits_verdict) != "within" || !broken);
}

// The cause of the first failure on the console; else the first that was counted or warned of.
std::string told_cause(const RunRecord& run, const Row& evidence) {
    const std::string& told = text_in(evidence[place_of(evidence_columns, "told_cause")]);
    if (!told.empty()) {
        return told;
    }
    auto found = std::ranges::find_if(run.causes, has_counted);
    if (found == run.causes.end()) {
        found = std::ranges::find_if(
            run.causes, [](const Row& cause) { return count_in(cause[cause_warnings]) != 0; });
    }
    return found == run.causes.end() ? "" : text_in((*found)[cause_name]);
}

Value reason_of(const RunRecord& run, const Row& evidence) {
    if (run.passed()) {
        return {};
    }
    if (run.text(verdict) == "passed") {
        return "limits-" + run.text(limits_verdict);
    }
    if (run.text(verdict) == "failed") {
        std::string cause = told_cause(run, evidence);
        if (!cause.empty()) {
            return cause;
        }
    }
    if (run.text(end) != "finished") {
        return run.text(end);
    }
    return is_set(evidence, place_of(evidence_columns, "saved")) ? "not-judged" : "not-saved";
}

std::string words_of(const Row& row, std::size_t from, std::size_t to) {
    std::string words;
    for (std::size_t i = from; i < to; ++i) {
        words += text_in(row[i]) + "\n" + std::to_string(count_in(row[i])) + "\n";
    }
    return words;
}

// What the run proves: of the unit, its attempt and its outcome.
std::string proof_of(const RunRecord& run, const std::string& serial) {
    std::string proof = serial + "\n" + std::to_string(run.count(run_place("attempt"))) + "\n" +
                        words_of(run.row, mode, verdict + 1) +
                        words_of(run.row, iterations, iterations_unfinished + 1);
    for (const Row& cause : run.causes) {
        proof += words_of(cause, cause_name, cause_warnings + 1);
    }
    return proof;
}

std::string objection_to_ids(RunRecord& run, const std::string& serial) {
    const std::string proof = proof_of(run, serial);
    run.row[run_place("content_id")] = content_id(proof);
    Value& id = run.row[run_place("run_id")];
    if (is_null(id)) {
        id = content_id(proof + words_of(run.row, 0, run.row.size()));
    }
    return is_content_id(text_in(id)) ? "" : "id is no id of a run";
}

std::string objection_to_date(RunRecord& run) {
    const std::string& text = run.text(run_place("began_at"));
    const std::optional<Moment> began = moment_of(text);
    run.row[run_place("began_utc_s")] = value_of(began);
    return text.empty() || began ? "" : "began_at is no date and time with its zone";
}

std::string objection_to_macs(RunRecord& run, const Row& evidence) {
    Value& own = run.row[run_place("mac")];
    if (!is_null(own)) {
        own = report::mac_address(text_in(own));
        if (text_in(own).empty()) {
            return "identity/mac is no MAC address";
        }
        run.macs.push_back(text_in(own));
    }
    for (const std::size_t place :
         {place_of(evidence_columns, "mac_kernel"), place_of(evidence_columns, "mac_chip")}) {
        std::string mac = report::mac_address(text_in(evidence[place]));
        if (!mac.empty()) {
            run.macs.push_back(std::move(mac));
        }
    }
    return "";
}

} // namespace

std::string judge(RunRecord& run, const Row& evidence, const std::string& serial) {
    std::string problem = objection_to_words(run);
    problem = problem.empty() ? objection_to_parts(run) : problem;
    problem = problem.empty() ? objection_to_date(run) : problem;
    problem = problem.empty() ? objection_to_macs(run, evidence) : problem;
    if (!problem.empty()) {
        return problem;
    }
    if (contradicts(run, is_set(evidence, place_of(evidence_columns, "clean"))) ||
        !limits_agree(run)) {
        return "verdict contradicts the rest of the report";
    }
    const bool within = is_null(run.row[limits_verdict]) || run.text(limits_verdict) == "within";
    run.row[run_place("passed")] = std::int64_t{run.text(verdict) == "passed" && within ? 1 : 0};
    run.row[run_place("cause")] = reason_of(run, evidence);
    Value& warned = run.row[run_place("iterations_warned")];
    warned = count_in(warned);
    return objection_to_ids(run, serial);
}

} // namespace wivex::line

// SPDX-License-Identifier: Apache-2.0
#include "reader/report_reader.hpp"

#include "common/content_id.hpp"
#include "common/printable.hpp"
#include "reader/judging.hpp"
#include "reader/report_walk.hpp"

#include <algorithm>

namespace wivex::line {

namespace {

constexpr std::int64_t known_version = 2;

std::string objection_to_frame(const Walked& walked) {
    const auto column = [&](std::size_t place) -> const Value& { return walked.document[place]; };
    const std::int64_t version = count_in(column(place_of(document_columns, "version")));
    if (text_in(column(place_of(document_columns, "format"))) != "wivex-report") {
        return "no report of wivex-report";
    }
    if (version != known_version) {
        return "version " + std::to_string(version) + " of the format; this program knows " +
               std::to_string(known_version);
    }
    if (walked.runs.empty()) {
        return "holds no run";
    }
    return is_null(column(place_of(document_columns, "verdict"))) ? "verdict is missing" : "";
}

// The verdict of a console may rest on runs that the report has left out.
std::string objection_to_verdict(const std::string& verdict, Report& report) {
    const bool explained = std::ranges::any_of(report.runs, [](const RunRecord& run) {
        return run.text(run_place("verdict")) != "passed";
    });
    if (verdict == "passed") {
        return explained ? "verdict contradicts the rest of the report" : "";
    }
    if (!explained) {
        for (RunRecord& run : report.runs) {
            run.row[run_place("passed")] = std::int64_t{0};
            run.row[run_place("cause")] = "left-out-run";
        }
    }
    return "";
}

void add_identity(const Row& identity, RunRecord& run) {
    for (std::size_t i = 0; i < identity.size(); ++i) {
        if (!is_null(identity[i])) {
            run.row[i] = identity[i];
        }
    }
}

std::string read_runs(Walked& walked, Report& report) {
    std::string ids;
    for (WalkedRun& one : walked.runs) {
        RunRecord& run = one.record;
        add_identity(walked.identity, run);
        std::string problem = judge(run, one.evidence, report.serial);
        const auto same = [&](const RunRecord& other) {
            return other.text(run_place("run_id")) == run.text(run_place("run_id"));
        };
        if (problem.empty() && std::ranges::any_of(report.runs, same)) {
            problem = "id stands twice";
        }
        if (!problem.empty()) {
            return "run " + std::to_string(report.runs.size() + 1) + ": " + problem;
        }
        ids += run.text(run_place("run_id"));
        report.runs.push_back(std::move(run));
    }
    for (RunRecord& run : report.runs) {
        run.row[run_place("report_id")] = content_id(ids);
    }
    return "";
}

} // namespace

std::string objection_to_serial(std::string_view serial) {
    if (serial.empty()) {
        return "a serial number is not empty";
    }
    if (serial.size() > 256) {
        return "serial is too long";
    }
    return report::is_printable(serial)
               ? ""
               : "the serial number holds control characters or is no UTF-8";
}

ReadResult read_report(std::string_view text, std::string_view serial, Report& report,
                       std::string& reason) {
    Walked walked;
    reason = ReportWalk(walked).walk(text);
    reason = reason.empty() ? objection_to_frame(walked) : reason;
    if (!reason.empty()) {
        return ReadResult::unreadable;
    }
    const std::string& own = text_in(walked.document[place_of(document_columns, "serial")]);
    report.serial = own.empty() ? serial : own;
    report.notes = std::move(walked.notes);
    reason = read_runs(walked, report);
    reason = reason.empty()
                 ? objection_to_verdict(
                       text_in(walked.document[place_of(document_columns, "verdict")]), report)
                 : reason;
    if (!reason.empty()) {
        return ReadResult::unreadable;
    }
    if (report.serial.empty()) {
        reason = "does not say which unit was tested (no serial number)";
        return ReadResult::nameless;
    }
    return ReadResult::good;
}

} // namespace wivex::line

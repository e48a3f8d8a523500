// SPDX-License-Identifier: Apache-2.0
#include "reader/report_reader.hpp"

#include "common/content_id.hpp"
#include "reader/fields.hpp"
#include "reader/run_fields.hpp"

#include <algorithm>

namespace wivex::line {

namespace {

constexpr std::int64_t known_version = 2;
constexpr std::int64_t most_attempts = 1'000'000;
constexpr std::size_t most_serial = 256;
constexpr std::size_t most_notes = 128;

Identity read_identity(const Json& object, std::string& problem) {
    Fields fields(object, "identity", problem);
    Identity identity;
    identity.serial = fields.text("serial", most_serial).value_or("");
    identity.part = fields.text("part");
    identity.station = fields.text("station");
    identity.worker = fields.text("operator");
    identity.kernel = fields.text("kernel");
    identity.driver = fields.text("driver");
    identity.driver_version = fields.text("driver_version");
    identity.firmware = fields.text("firmware");
    identity.regulatory_domain = fields.text("regulatory_domain");
    identity.attempt = fields.count("attempt");
    if (identity.attempt && (*identity.attempt < 1 || *identity.attempt > most_attempts)) {
        fields.complain("attempt", "is no number from 1 on");
    }
    const Text mac = fields.text("mac");
    if (mac) {
        identity.mac = mac_of(*mac);
        if (identity.mac->empty()) {
            fields.complain("mac", "is no MAC address");
        }
    }
    return identity;
}

// What does not fit is left out: notes are for people, and nothing counts them.
std::vector<Note> read_notes(const Json& identity) {
    std::vector<Note> notes;
    const auto add = [&](const char* kind, const std::string& name, const Json& text) {
        if (text.is_string() && notes.size() < most_notes && name.size() <= 256 &&
            name.find('\0') == std::string::npos) {
            std::string words = text.get<std::string>();
            std::ranges::replace(words, '\0', ' ');
            notes.push_back({kind, name, std::move(words)});
        }
    };
    const auto facts = identity.find("facts");
    if (facts != identity.end() && facts->is_object()) {
        for (const auto& [name, text] : facts->items()) {
            add("fact", name, text);
        }
    }
    const auto warnings = identity.find("warnings");
    if (warnings != identity.end() && warnings->is_array()) {
        for (const Json& text : *warnings) {
            add("warning", std::to_string(notes.size()), text);
        }
    }
    return notes;
}

void check_frame(Fields& fields, std::string& problem) {
    if (fields.text("format") != Text("wivex-report") && problem.empty()) {
        problem = "no report of wivex-report";
    }
    const std::int64_t version = fields.required_count("version");
    if (version != known_version && problem.empty()) {
        problem = "version " + std::to_string(version) + " of the format; this program knows " +
                  std::to_string(known_version);
    }
    if (fields.list("runs").empty() && problem.empty()) {
        problem = "holds no run";
    }
}

// The verdict of a console may rest on runs that the report has left out.
void blame_left_out(const std::string& verdict, Report& report) {
    const bool explained = std::ranges::any_of(
        report.runs, [](const RunRecord& run) { return run.verdict != "passed"; });
    if (verdict != "passed" && !explained) {
        for (RunRecord& run : report.runs) {
            run.passed = false;
            run.cause = "left-out-run";
        }
    }
}

void read_runs(Fields& fields, Report& report, std::string& problem) {
    const Json& runs = fields.list("runs");
    std::string ids;
    for (std::size_t i = 0; i < runs.size() && problem.empty(); ++i) {
        const std::string where = "runs[" + std::to_string(i) + "]";
        RunRecord run = read_run(runs[i], where, report.identity, problem);
        const auto same = [&](const RunRecord& other) { return other.id == run.id; };
        if (std::ranges::any_of(report.runs, same) && problem.empty()) {
            problem = where + ".id stands twice";
        }
        ids += run.id;
        report.runs.push_back(std::move(run));
    }
    report.id = content_id(ids);
}

} // namespace

std::string objection_to_serial(std::string_view serial) {
    if (serial.empty()) {
        return "a serial number is not empty";
    }
    std::string problem;
    const Json named = {{"serial", serial}};
    Fields(named, "", problem).text("serial", most_serial);
    if (problem.empty() && named.dump(-1, ' ', true, Json::error_handler_t::ignore) !=
                               named.dump(-1, ' ', true, Json::error_handler_t::replace)) {
        problem = "the serial number is no UTF-8";
    }
    return problem;
}

ReadResult read_report(std::string_view text, std::string_view serial, Report& report,
                       std::string& reason) {
    reason.clear();
    const Json document = read_json(text, reason);
    if (!reason.empty()) {
        return ReadResult::unreadable;
    }
    Fields fields(document, "", reason);
    check_frame(fields, reason);
    const Json& identity = fields.object("identity");
    report.identity = read_identity(identity, reason);
    if (report.identity.serial.empty()) {
        report.identity.serial = serial;
    }
    report.notes = read_notes(identity);
    read_runs(fields, report, reason);
    const std::string verdict = fields.required_text("verdict");
    const bool green = std::ranges::all_of(
        report.runs, [](const RunRecord& run) { return run.verdict == "passed"; });
    if (verdict == "passed" && !green) {
        fields.complain("verdict", "contradicts the rest of the report");
    }
    if (!reason.empty()) {
        return ReadResult::unreadable;
    }
    blame_left_out(verdict, report);
    if (report.identity.serial.empty()) {
        reason = "does not say which unit was tested (no serial number)";
        return ReadResult::nameless;
    }
    return ReadResult::good;
}

} // namespace wivex::line

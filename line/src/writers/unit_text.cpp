// SPDX-License-Identifier: Apache-2.0
#include "writers/unit_text.hpp"

#include "common/printable.hpp"
#include "common/words.hpp"
#include "writers/unit_words.hpp"

namespace wivex::line {

namespace {

std::string shown(const std::string& text) {
    return report::printable(text, 400);
}

std::string figure(const Figure& value, const std::string& unit) {
    return value ? ", " + report::figure_text(*value) + " " + unit : "";
}

std::string run_line(const UnitRun& run) {
    std::string text =
        "    " + run.began_at.value_or("without a date") + "  " + verdict_words(run) + "\n";
    text += "        " + run.mode + ", " + std::to_string(run.iterations_passed) + " of " +
            report::iterations_text(static_cast<std::uint64_t>(run.iterations)) + " passed";
    text += figure(run.throughput_mean, "Mbit/s") + figure(run.signal_mean, "dBm");
    if (run.limits_verdict) {
        text += ", limits: " + *run.limits_verdict;
    }
    text += "\n        station " + (run.key.station.empty() ? "unknown" : shown(run.key.station));
    if (!run.key.firmware.empty()) {
        text += ", firmware " + shown(run.key.firmware);
    }
    return text + (run.report_path ? "\n        " + shown(*run.report_path) : "") + "\n";
}

} // namespace

std::string unit_text(const UnitHistory& unit) {
    const std::vector<Attempt> attempts = unit.attempts();
    std::string text = "Unit " + shown(unit.serial) + "\n";
    if (!unit.macs.empty()) {
        text += "  MAC " + mac_words(unit) + "\n";
    }
    for (const std::string& doubt : doubts_about(unit, attempts)) {
        text += "  WARNING: " + shown(doubt) + "\n";
    }
    std::size_t place = 0;
    for (const Attempt& attempt : attempts) {
        text += "  " + attempt_title(attempt, ++place) + ": " +
                (attempt.passed ? "passed" : "no pass") + "\n";
        for (const std::size_t run : attempt.runs) {
            text += run_line(unit.runs.at(run));
        }
    }
    return text;
}

} // namespace wivex::line

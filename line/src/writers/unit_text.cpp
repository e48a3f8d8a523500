// SPDX-License-Identifier: Apache-2.0
#include "writers/unit_text.hpp"

#include "common/printable.hpp"
#include "common/words.hpp"

namespace wivex::line {

namespace {

std::string shown(const std::string& text) {
    return report::printable(text, 400);
}

std::string figure(const Figure& value, const std::string& unit) {
    return value ? ", " + report::figure_text(*value) + " " + unit : "";
}

std::string run_line(const UnitRun& run) {
    std::string text = "    " + run.began_at.value_or("without a date") + "  " +
                       verdict_words(run.key.passed, run.verdict, run.key.cause) + "\n";
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

std::string mac_lines(const UnitHistory& unit) {
    std::string text;
    for (const MacClaim& claim : unit.macs) {
        text += "  MAC " + shown(claim.mac) + "\n";
        for (const std::string& other : claim.others) {
            text += "    WARNING: unit " + shown(other) + " has this MAC too\n";
        }
    }
    if (unit.macs.size() > 1) {
        text += "  WARNING: one unit with " + std::to_string(unit.macs.size()) + " MACs\n";
    }
    return text;
}

} // namespace

std::string verdict_words(bool passed, const std::string& verdict, const std::string& cause) {
    if (passed) {
        return "passed";
    }
    // A run may have passed all by itself and be no pass for its limits.
    const std::string head = verdict == "passed"    ? "no pass"
                             : verdict == "unknown" ? "not known"
                                                    : verdict;
    return cause.empty() ? head : head + ": " + cause;
}

std::string unit_text(const UnitHistory& unit) {
    std::string text = "Unit " + shown(unit.serial) + "\n" + mac_lines(unit);
    const std::vector<Attempt> attempts = unit.attempts();
    if (!attempts.empty() && attempts.front().number.value_or(1) != 1) {
        text += "  The first attempt is not in the database.\n";
    }
    std::size_t place = 0;
    for (const Attempt& attempt : attempts) {
        ++place;
        text += "  Attempt " + std::to_string(attempt.number.value_or(static_cast<long>(place))) +
                (attempt.number ? "" : " (not numbered by the station)") + ": " +
                (attempt.passed ? "passed" : "no pass") + "\n";
        for (const std::size_t run : attempt.runs) {
            text += run_line(unit.runs.at(run));
        }
    }
    if (unit.runs_left_out != 0) {
        text += "  " + std::to_string(unit.runs_left_out) + " more runs are not shown.\n";
    }
    for (const UnitConflict& conflict : unit.conflicts) {
        text += "  CONFLICT: run " + shown(conflict.run_id) + " came again with other content (" +
                shown(conflict.verdict) + ") in " + shown(conflict.report_path) + "\n";
    }
    return text;
}

} // namespace wivex::line

// SPDX-License-Identifier: Apache-2.0
#include "writers/unit_words.hpp"

namespace wivex::line {

std::vector<std::string> doubts_about(const UnitHistory& unit,
                                      const std::vector<Attempt>& attempts) {
    std::vector<std::string> doubts;
    for (const MacClaim& claim : unit.macs) {
        for (const std::string& other : claim.others) {
            doubts.push_back("Unit " + other + " has the MAC " + claim.mac + " too.");
        }
    }
    if (unit.macs.size() > 1) {
        doubts.push_back("One unit with " + std::to_string(unit.macs.size()) + " MACs.");
    }
    if (!attempts.empty() && attempts.front().number.value_or(1) != 1) {
        doubts.emplace_back("The first attempt is not in the database.");
    }
    for (const UnitConflict& conflict : unit.conflicts) {
        doubts.push_back("CONFLICT: the run " + conflict.run_id +
                         " came again with another content (" + conflict.verdict + ") in " +
                         conflict.report_path + ".");
    }
    if (unit.runs_left_out != 0) {
        doubts.push_back(std::to_string(unit.runs_left_out) + " more runs are not shown.");
    }
    return doubts;
}

std::string attempt_title(const Attempt& attempt, std::size_t place) {
    return "Attempt " + std::to_string(attempt.number.value_or(static_cast<std::int64_t>(place))) +
           (attempt.number ? "" : " (not numbered by the station)");
}

std::string verdict_words(const UnitRun& run) {
    if (run.key.passed) {
        return "passed";
    }
    // A run may have passed all by itself and be no pass for its limits.
    const std::string head = run.verdict == "passed"    ? "no pass"
                             : run.verdict == "unknown" ? "not known"
                                                        : run.verdict;
    return run.key.cause.empty() ? head : head + ": " + run.key.cause;
}

std::string attempt_words(bool passed, const std::string& cause) {
    return passed ? "passed" : "no pass: " + cause;
}

std::string mac_words(const UnitHistory& unit) {
    std::string words;
    for (const MacClaim& claim : unit.macs) {
        words += (words.empty() ? "" : ", ") + claim.mac;
    }
    return words;
}

} // namespace wivex::line

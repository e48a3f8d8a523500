// SPDX-License-Identifier: Apache-2.0
// What one report (a run.json of wivex-report) says, as far as a production line keeps it.
#pragma once

#include "common/moment.hpp"
#include "model/phases.hpp"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace wivex::line {

using Text = std::optional<std::string>;
using Figure = std::optional<double>;

/// Who and what was tested, by whom.
struct Identity {
    std::string serial;
    Text part;
    Text station;
    Text worker; ///< the operator
    Text mac;
    Text kernel;
    Text driver;
    Text driver_version;
    Text firmware;
    Text regulatory_domain;
    /// As the station counts, from 1.
    std::optional<std::int64_t> attempt;
};

struct CauseCount {
    std::string cause;
    std::int64_t failures = 0;
    std::int64_t warnings = 0;
    std::optional<std::int64_t> first_iteration;
};

struct LimitResult {
    std::string name;
    std::string comparison; ///< ">=" or "<="
    double limit = 0;
    Text unit;
    Figure value;
    std::string verdict; ///< "within", "outside", "unknown"
};

/// A fact that the station gave, or a warning about the identity.
struct Note {
    std::string kind; ///< "fact" or "warning"
    std::string name;
    std::string text;
};

struct RunRecord {
    std::string id;
    std::string mode;
    std::string end;
    std::string verdict;
    Text limits_verdict;
    /// The only thing that counts as a pass: verdict and limits both say so, and nothing
    /// contradicts.
    bool passed = false;
    /// Why it is no pass: a cause of wivex-report, or how the run ended. Nothing for a pass.
    Text cause;
    Text began_at;
    Text ended_at;
    std::optional<Moment> began;
    Figure duration;
    std::int64_t iterations = 0;
    std::array<std::int64_t, report::outcome_count> outcomes{};
    std::int64_t warned = 0;
    Figure throughput_mean;
    Figure throughput_least;
    Figure signal_mean;
    std::array<Figure, report::phase_count> phase_means{};
    std::vector<CauseCount> causes;
    std::vector<LimitResult> limits;
    /// The MAC addresses that its console shows.
    std::vector<std::string> macs;
    /// What the run proves, without times and places: differs when two reports of one run disagree.
    std::string content;
};

struct Report {
    /// Where the file stands.
    std::string path;
    /// Made of its runs: the runs of one report without attempt number are one attempt.
    std::string id;
    Identity identity;
    std::vector<Note> notes;
    std::vector<RunRecord> runs;
};

} // namespace wivex::line

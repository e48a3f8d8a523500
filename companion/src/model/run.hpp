// SPDX-License-Identifier: Apache-2.0
// What was learnt of the runs on a console. Plain records of bounded size: exact counts for the
// whole run, details for the first iterations and failures, and a timeline that gets coarser as
// the run gets longer.
#pragma once

#include "common/digest.hpp"
#include "model/evidence.hpp"
#include "model/identity.hpp"
#include "model/limits.hpp"
#include "model/modes.hpp"
#include "model/run_times.hpp"
#include "model/series.hpp"
#include "model/sub_causes.hpp"
#include "model/worst.hpp"

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <limits>
#include <string>
#include <vector>

namespace wivex::report {

constexpr float unknown_time = std::numeric_limits<float>::quiet_NaN();
constexpr float unknown_signal = unknown_time;

constexpr std::size_t most_runs = 8;
constexpr std::size_t most_detailed_iterations = 5000;
constexpr std::size_t most_detailed_failures = 1000;
constexpr std::size_t most_detailed_failures_of_cause = 100;
constexpr std::size_t most_access_points = 128;
constexpr std::size_t most_slices = 512;

/// Smallest, largest and mean of a figure.
struct Spread {
    std::uint32_t count = 0;
    float least = 0;
    float most = 0;
    double sum = 0;

    void add(float value);
    void add(const Spread& other);
    double mean() const {
        return count == 0 ? 0 : sum / count;
    }
};

struct PhaseRecord {
    Verdict verdict = Verdict::none;
    /// `unknown_time` when the console came without times.
    float seconds = unknown_time;

    /// Its time says something about the device and not about a time-out.
    bool was_completed() const {
        return verdict == Verdict::passed || verdict == Verdict::warned;
    }
};

struct Iteration {
    /// Counts from 0, as the tool does.
    std::uint32_t number = 0;
    Outcome outcome = Outcome::unfinished;
    bool warned = false;
    /// Seconds after the first line of the run.
    float start = unknown_time;
    float seconds = unknown_time;
    /// In Mbit/s; negative when there was no figure.
    float throughput = -1;
    /// Of the access point under test, in dBm; unknown unless the console lists it.
    float signal = unknown_signal;
    std::array<PhaseRecord, phase_count> phases{};

    /// Counted by the tool or not.
    bool failed() const {
        return outcome == Outcome::failed || outcome == Outcome::uncounted;
    }
    void forget_times();
    const PhaseRecord& phase(Phase which) const {
        return phases.at(index_of(which));
    }
};

/// Some consecutive iterations of the timeline together.
struct Slice {
    std::uint32_t first = 0;
    std::uint32_t iterations = 0;
    std::array<std::uint32_t, outcome_count> outcomes{};
    std::uint32_t warned = 0;
    Spread throughput;
    Spread signal;
    std::array<Spread, phase_count> seconds{};

    void add(const Iteration& iteration);
    void add(const Slice& other);
    std::uint32_t count(Outcome outcome) const {
        return outcomes.at(static_cast<std::size_t>(outcome));
    }
};

/// The whole run in at most `most_slices` slices: when they are used up, neighbours are joined.
class Timeline {
public:
    void add(const Iteration& iteration);
    void forget_times();
    const std::vector<Slice>& slices() const {
        return slices_;
    }
    /// Iterations in a full slice.
    std::uint32_t width() const {
        return width_;
    }

private:
    std::vector<Slice> slices_;
    std::uint32_t width_ = 1;
};

/// Something that failed, with the console lines that show it.
struct Failure {
    Cause cause = Cause::none;
    SubCause sub_cause = SubCause::none;
    Phase phase = Phase::none;
    std::uint32_t iteration = 0;
    /// Number of the console line that told it, from 1.
    std::uint64_t line = 0;
    /// Only told, the test went on.
    bool warning = false;
    /// The run was interrupted before the tool recorded it.
    bool unrecorded = false;
    /// Not told but concluded from what did not come: standard error was not in the console.
    bool concluded = false;
    /// Printable text; the line that told it is `shown_at`, counted from 0.
    std::vector<std::string> lines;
    std::size_t shown_at = 0;
};

struct CauseCount {
    /// Recorded by the tool.
    std::uint32_t failures = 0;
    std::uint32_t warnings = 0;
    std::uint32_t unrecorded = 0;
    std::uint32_t detailed = 0;
    std::uint32_t first_iteration = 0;
    std::uint32_t last_iteration = 0;

    std::uint32_t all() const {
        return failures + warnings + unrecorded;
    }
};

struct SubCauseCount {
    SubCause sub_cause = SubCause::none;
    std::uint32_t count = 0;
};

struct AccessPoint {
    std::string bssid;
    std::string ssid;
    int frequency = 0;
    std::uint32_t times_seen = 0;
    Spread signal;
};

struct Device {
    std::string build;
    std::string config_file;
    int chip_type = 0;
    std::string vendor_id;
    std::string product_id;
    std::string mac_kernel;
    std::string mac_chip;
    std::string address;
};

enum class TimeSource : std::uint8_t { none, arrival, stamps };

struct Run {
    Device device;
    Mode mode = Mode::unknown;
    RunEnd end = RunEnd::open;
    TimeSource times = TimeSource::none;
    /// When it began, as well as the source of times can tell; empty: unknown.
    std::string began;
    float seconds = unknown_time;
    RunTimes when;
    /// Of its console lines; see `run_id`.
    DigestValue lines_digest{};
    /// Earlier runs of the console whose lines are the same.
    std::uint32_t twins_before = 0;
    std::string result_file;
    bool result_written = false;
    /// At least one message of the tool's standard error stands in the console.
    bool has_standard_error = false;
    Evidence evidence;
    /// Iterations that it was to have; 0: not known.
    std::uint32_t expected = 0;

    std::uint32_t started = 0;
    std::array<std::uint32_t, outcome_count> outcomes{};
    std::uint32_t warned = 0;
    std::array<CauseCount, cause_count> causes{};
    /// What lies behind the causes, as far as other lines tell.
    std::array<std::array<std::uint32_t, sub_cause_count>, cause_count> sub_causes{};
    /// Loopbacks that passed although the driver left their status as it was sent.
    std::uint32_t untouched_loopbacks = 0;
    std::array<std::array<std::uint32_t, verdict_count>, phase_count> verdicts{};
    std::array<Spread, phase_count> phase_seconds{};
    Spread throughput;
    Spread iteration_seconds;
    std::array<Series, phase_count> phase_series{};
    Series throughput_series;
    Series iteration_series;
    Spread signal;
    Series signal_series;
    std::vector<LimitTally> limits;
    WorstIterations worst;
    std::uint32_t clients_served = 0;

    std::vector<Iteration> iterations;
    std::vector<Failure> failures;
    Timeline timeline;
    std::vector<AccessPoint> access_points;
    std::uint32_t unlisted_access_points = 0;
    std::vector<std::string> unknown_keys;

    std::uint32_t count(Outcome outcome) const {
        return outcomes.at(static_cast<std::size_t>(outcome));
    }
    const CauseCount& count(Cause cause) const {
        return causes.at(index_of(cause));
    }
    /// The causes that were told at least once.
    std::vector<Cause> told_causes() const;
    /// What was told to lie behind `cause`.
    std::vector<SubCauseCount> behind(Cause cause) const;
    /// Iterations that failed, counted by the tool or not.
    std::uint32_t failed() const {
        return count(Outcome::failed) + count(Outcome::uncounted);
    }
    /// Iterations that are over.
    std::uint32_t ended() const {
        return failed() + count(Outcome::passed) + count(Outcome::unfinished);
    }
    /// Failures as the tool's result file counts them, by test case.
    std::uint32_t failures_of_test_case(int test_case) const;
    /// Failures whose test case the console does not tell, because the mode is unknown.
    std::uint32_t failures_without_test_case() const;
    std::uint32_t all_failures() const;
};

struct Log {
    Identity identity;
    SeenMacs macs;
    std::deque<Run> runs;
    /// Earlier runs that were dropped to keep the memory bounded.
    std::uint32_t dropped_runs = 0;
    /// The verdicts on them.
    std::array<std::uint32_t, run_verdict_count> dropped_verdicts{};
    /// What figures are held against, and the worst that the dropped runs have shown of it.
    std::vector<Limit> limits;
    std::vector<LimitResult> dropped_limits;
    std::uint64_t bytes = 0;
    std::uint64_t lines = 0;
    std::uint64_t unknown_lines = 0;
};

} // namespace wivex::report

// SPDX-License-Identifier: Apache-2.0
// The iteration that is being read: its phases and their times, what it has shown so far, and
// what its outcome is when it ends.
#pragma once

#include "model/run.hpp"
#include "reader/heard.hpp"

#include <cstddef>
#include <cstdint>
#include <optional>

namespace wivex::report {

/// A moment of the console's clock; without a clock nothing is timed.
struct Moment {
    double seconds = 0;
    bool known = false;
};

/// A failure of a mode that the tool has told and not yet recorded.
struct PendingFailure {
    Cause cause = Cause::none;
    /// Its place among the described failures.
    std::size_t detail = 0;
    int connections_closed = 0;
};

struct OpenIteration {
    Iteration record;
    bool open = false;
    /// Something after the module check was seen.
    bool moved_on = false;
    bool check_failed = false;
    bool mode_failed = false;
    bool mode_passed = false;
    bool mode_seen = false;
    bool session_trouble = false;
    bool address_taken = false;
    bool owner = false;
    bool role_known = false;
    bool traffic_seen = false;
    int connections_closed = 0;
    /// The console line that it began with, from 1.
    std::uint64_t first_line = 0;
    HeardAccessPoints heard;
    /// What other programs said that may lie behind a failure.
    SubCause sub_cause = SubCause::none;
    std::optional<PendingFailure> pending;
    /// Phases that a line of the tool itself has judged.
    std::array<bool, phase_count> judged_phases{};

    /// Phases that were under way when the clock jumped.
    std::array<bool, phase_count> untimed_phases{};

    /// The phase that is under way, and since when.
    Phase phase = Phase::none;
    double mark = 0;
    double began = 0;
    /// The last rate told, in Mbit/s; negative when there was none.
    double rate = -1;

    void begin(std::uint32_t number, Moment now, double run_began);

    /// `next` is under way: what was under way before has passed.
    void enter(Phase next, Moment now);

    /// What is under way has come to its end.
    void close_phase(Verdict verdict, Moment now);

    /// A line of the tool judges `judged`.
    void judge(Phase judged, Verdict verdict, Moment now);

    bool was_judged(Phase which) const {
        return judged_phases.at(index_of(which));
    }

    void take_rate(float megabits_per_second, bool of_all_streams, bool of_all_time);

    /// Chooses the figure that stands for the whole iteration.
    void set_throughput();

    /// Takes the signal of the access point under test.
    void set_signal() {
        record.signal = heard.signal();
    }

    /// The outcome in `mode`; `complete`: the tool has gone on behind it.
    Outcome outcome(Mode mode, bool complete) const;

    /// Whether a pass was shown in this way.
    bool is_pass_shown(PassShown by, bool complete) const;

    /// The failure that the mode must have told on a standard error that is not in this console:
    /// its session was closed, and the line of a pass did not come.
    Cause missing_failure(Mode mode) const;

    /// The clock jumped: what is under way has no time.
    void lose_time();

    /// The time since the last thing that happened belongs to the phase `to`.
    void pass_time_to(Phase to, Moment now);

    float sum_throughput = -1;
    Spread throughput;
    std::optional<float> total_throughput;
};

} // namespace wivex::report

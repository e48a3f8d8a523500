// SPDX-License-Identifier: Apache-2.0
// Builds the log of a console: where runs and iterations begin and end, the phase that is under
// way, and when a failure counts.
#pragma once

#include "console/line_reader.hpp"
#include "model/progress.hpp"
#include "reader/failure_keeper.hpp"
#include "reader/open_iteration.hpp"
#include "reader/run_trace.hpp"

#include <cstdint>
#include <string_view>
#include <vector>

namespace wivex::report {

/// Seconds since 1970, UTC, by the clock of this machine.
double system_seconds();

struct ReaderOptions {
    /// The mode that runs; `Mode::unknown`: to be seen from the console.
    Mode mode = Mode::unknown;
    /// Whether the moment at which bytes are fed is the moment at which the tool wrote them.
    bool arrival_times = false;
    /// Iterations that a run has; 0: unknown.
    std::uint32_t iterations = 0;
    /// What is known of the device and the station before the console is read.
    Identity identity{};
    /// The clock of the world, seconds since 1970.
    double (*wall_clock)() = system_seconds;
    /// What the figures of a run are held against.
    std::vector<Limit> limits = {};
};

class LogBuilder {
public:
    explicit LogBuilder(const ReaderOptions& options);

    // ---- The console
    const Log& log() const {
        return log_;
    }
    Now now() const;
    void add_bytes(std::size_t count) {
        log_.bytes += count;
    }
    /// The next line, without its stamp.
    void add_line(std::string_view line);
    void add_unknown_line() {
        ++log_.unknown_lines;
    }
    /// The moment from now on: seconds on any steady clock, and the world's when it is known.
    void set_time(const LineTime& time) {
        clock_ = time.steady;
        time_ = time;
    }
    /// When bytes arrive that are fed at `now`, seconds of any steady clock.
    LineTime arrival(double now) const;
    /// The clock jumped at the line that comes next: what is under way cannot be timed.
    void clock_jumped(double seconds);
    /// Everything that `line`, as it stands on the console, tells has been taken; `told`: some of
    /// it by the tool.
    void end_line(std::string_view line, bool told);
    /// Brings the open run up to date for whoever looks at the log now.
    void settle();
    SeenMacs& macs() {
        return log_.macs;
    }
    /// Reads the lines. It learns here what names of access points follow, and where they end.
    LineReader& console() {
        return console_;
    }

    // ---- Runs
    /// Null when no run is open.
    Run* run() {
        return run_;
    }
    /// Its iterations are over; only its end is still to come.
    bool is_run_over() const {
        return run_over_;
    }
    void begin_run();
    void end_run(RunEnd end);
    /// The console has ended.
    void finish();
    /// The tool has left its loop, if nothing said so before.
    void end_of_results();
    /// The loop ended in this way; the open iteration has come to its end when `complete`.
    void end_iterations(RunEnd end, bool complete);
    /// The same, whatever becomes of the open iteration.
    void leave_loop(RunEnd end);
    void interrupted();

    // ---- Iterations and phases; most of it does nothing while no iteration is open
    OpenIteration& iteration() {
        return current_;
    }
    void begin_iteration();
    void enter(Phase phase) {
        current_.enter(phase, moment());
    }
    void judge(Phase phase, Verdict verdict) {
        current_.judge(phase, verdict, moment());
    }
    void close_phase(Verdict verdict) {
        current_.close_phase(verdict, moment());
    }

    // ---- Failures
    void fail(Cause cause, bool concluded = false);
    /// Told, and the test goes on.
    void warn(Cause cause);
    /// The run loop has recorded what the mode had failed with.
    void commit_pending();

private:
    Moment moment() const;
    void end_iteration(bool complete);
    void tally_iteration();
    void note_console_lines();
    void doubt_arrival_times();
    std::size_t describe(Cause cause, bool warning, bool concluded);
    void conclude_missing_failure();

    RunTrace trace_;
    ReaderOptions options_;
    LineReader console_;
    FailureKeeper failures_;
    Log log_;
    Run* run_ = nullptr;
    OpenIteration current_;
    double clock_ = 0;
    LineTime time_;
    double run_began_ = 0;
    bool run_over_ = false;
    bool console_over_ = false;
};

} // namespace wivex::report

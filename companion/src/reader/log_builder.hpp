// SPDX-License-Identifier: Apache-2.0
// Builds the log of a console: where runs and iterations begin and end, the phase that is under
// way, and when a failure counts.
#pragma once

#include "console/line_reader.hpp"
#include "model/progress.hpp"
#include "reader/failure_keeper.hpp"
#include "reader/open_iteration.hpp"

#include <cstdint>
#include <string_view>
#include <vector>

namespace wivex::report {

struct ReaderOptions {
    /// The mode that runs; `Mode::unknown`: to be seen from the console.
    Mode mode = Mode::unknown;
    /// Whether the moment at which bytes are fed is the moment at which the tool wrote them.
    bool arrival_times = false;
    /// Iterations that a run has; 0: unknown.
    std::uint32_t iterations = 0;
    /// What the figures of a run are held against.
    std::vector<Limit> limits = {};
};

class LogBuilder {
public:
    explicit LogBuilder(const ReaderOptions& options) : options_(options) {
        log_.limits = options.limits;
    }

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
    /// Seconds on any steady clock.
    void set_clock(double seconds) {
        clock_ = seconds;
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

    ReaderOptions options_;
    LineReader console_;
    FailureKeeper failures_;
    Log log_;
    Run* run_ = nullptr;
    OpenIteration current_;
    bool run_over_ = false;
    bool console_over_ = false;
    double clock_ = 0;
    double run_began_ = 0;
};

} // namespace wivex::report

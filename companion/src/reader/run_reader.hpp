// SPDX-License-Identifier: Apache-2.0
// Reads a console and builds the model of its runs: splits it into iterations and phases and
// counts failures as the tool records them.
#pragma once

#include "line_splitter.hpp"
#include "reader/failure_keeper.hpp"
#include "reader/open_iteration.hpp"
#include "reader/scan_list.hpp"
#include "reader/stamp_reader.hpp"
#include "recogniser.hpp"
#include "run_model.hpp"

#include <cstdint>
#include <optional>
#include <string_view>

namespace wivex::report {

struct ReaderOptions {
    /// The mode that runs; `Mode::unknown`: to be seen from the console.
    Mode mode = Mode::unknown;
    /// Whether the moment at which bytes are fed is the moment at which the tool wrote them.
    bool arrival_times = false;
    /// Iterations that a run has; 0: unknown.
    std::uint32_t iterations = 0;
};

/// What goes on right now, for a live view.
struct Now {
    bool running = false;
    bool in_iteration = false;
    std::uint32_t iteration = 0;
    Phase phase = Phase::none;
    /// Seconds on the clock of `feed`, since when the phase is under way.
    double phase_since = 0;
    double iteration_since = 0;
    double run_since = 0;
    double megabits_per_second = -1;
};

class RunReader {
public:
    explicit RunReader(ReaderOptions options = {});

    /// Takes the next bytes of the console, read at `now` (seconds of any steady clock).
    void feed(std::string_view bytes, double now = 0);

    /// The console has ended: closes what is open.
    void finish(double now = 0);

    const Log& log() const {
        return log_;
    }
    /// The run that is being read, or the last one; null before the first.
    const Run* run() const {
        return log_.runs.empty() ? nullptr : &log_.runs.back();
    }
    Now now() const;

private:
    // Lines: run_reader.cpp
    void take_line(std::string_view line);
    bool take_name(std::string_view line);
    bool take_figures(std::string_view line);
    void take_other(std::string_view line);
    void see_access_point(std::string_view bssid, std::string_view ssid, int frequency,
                          std::optional<float> signal);

    // Runs and iterations: runs.cpp
    void begin_run();
    void end_run(RunEnd end);
    void begin_iteration();
    void end_iteration(bool complete);
    void tally_iteration();
    void end_of_results();
    void interrupted();
    void doubt_arrival_times();
    Moment moment() const;

    // Texts: findings.cpp
    void take_finding(const Finding& finding);
    void open_what_is_missing(const Finding& finding);
    void take_verdict(const Finding& finding);
    void take_about_device(const Finding& finding);
    void take_about_mode(const Finding& finding);
    void take_progress(const Finding& finding);
    void take_group_removal();
    void take_ending(const Finding& finding);
    void take_result(const Finding& finding);

    // Failures: run_failures.cpp
    void fail(Cause cause, bool concluded = false);
    void warn(Cause cause);
    std::size_t describe(Cause cause, bool warning, bool concluded);
    void commit_pending();
    void conclude_missing_failure();

    void enter(Phase phase) {
        current_.enter(phase, moment());
    }
    void judge(Phase phase, Verdict verdict) {
        current_.judge(phase, verdict, moment());
    }

    ReaderOptions options_;
    LineSplitter splitter_;
    Recogniser recogniser_;
    StampReader stamps_;
    ScanList names_;
    FailureKeeper failures_;
    Log log_;
    Run* run_ = nullptr;
    OpenIteration current_;
    bool run_over_ = false;

    double now_ = 0;
    double run_began_ = 0;
};

} // namespace wivex::report

// SPDX-License-Identifier: Apache-2.0
// Where runs and iterations begin and end.

#include "reader/log_builder.hpp"

#include "common/words.hpp"
#include "model/limit_verdict.hpp"
#include "model/verdict.hpp"
#include "reader/worst_keeper.hpp"

#include <algorithm>
#include <ctime>

namespace wivex::report {

namespace {

// The tool pauses two seconds after every iteration: a console that goes faster is a saved one.
constexpr double shortest_pause = 1.0;

// The phase that follows the last one that has a verdict.
Phase next_phase(const OpenIteration& iteration, Mode mode) {
    Phase last = Phase::module;
    for (const Phase phase : all_phases()) {
        last = iteration.record.phase(phase).verdict != Verdict::none ? phase : last;
    }
    return phase_after(mode, last);
}

} // namespace

LogBuilder::LogBuilder(const ReaderOptions& options) : options_(options) {
    log_.identity = options.identity;
    log_.limits = options.limits;
}

Moment LogBuilder::moment() const {
    return {clock_, run_ != nullptr && run_->times != TimeSource::none};
}

void LogBuilder::add_line(std::string_view line) {
    ++log_.lines;
    failures_.add_line(run_, line);
}

Now LogBuilder::now() const {
    Now state;
    state.running = run_ != nullptr && !run_over_;
    state.in_iteration = current_.open;
    state.run_since = run_began_;
    if (run_ == nullptr || !current_.open) {
        return state;
    }
    state.iteration = current_.record.number;
    state.phase = current_.phase;
    state.phase_since = current_.mark;
    state.iteration_since = current_.began;
    state.megabits_per_second = current_.rate;
    if (state.phase == Phase::none && !current_.mode_failed && !current_.mode_passed) {
        state.phase = next_phase(current_, run_->mode);
    }
    return state;
}

void LogBuilder::begin_run() {
    if (run_ != nullptr) {
        end_run(run_->end == RunEnd::open ? RunEnd::broke_off : run_->end);
    }
    if (log_.runs.size() == most_runs) {
        ++log_.dropped_verdicts.at(
            static_cast<std::size_t>(wivex::report::judge(log_.runs.front()).verdict));
        keep_worse(log_.dropped_limits, judge_limits(log_.runs.front()));
        log_.runs.pop_front();
        ++log_.dropped_runs;
    }
    run_ = &log_.runs.emplace_back();
    run_->mode = options_.mode;
    run_->expected = options_.iterations;
    for (const Limit& limit : options_.limits) {
        run_->limits.emplace_back().limit = limit;
    }
    run_over_ = false;
    run_began_ = clock_;
    current_ = {};
    console_.names().forget();
    failures_.forget();
    if (console_.stamps().active()) {
        run_->times = TimeSource::stamps;
        run_->began = console_.stamps().date_and_time();
    } else if (options_.arrival_times) {
        run_->times = TimeSource::arrival;
        run_->began = local_time(static_cast<std::time_t>(options_.wall_clock()));
    }
    trace_.begin(*run_, time_);
}

void LogBuilder::end_run(RunEnd end) {
    end_iteration(false);
    const Evidence& evidence = run_->evidence;
    if (run_->mode == Mode::unknown && run_->failures_without_test_case() == 0 &&
        evidence.judged_in(Phase::mac) + evidence.judged_in(Phase::loopback) != 0) {
        run_->mode = Mode::checks;
    }
    run_->end = end;
    if (moment().known) {
        run_->seconds = static_cast<float>(trace_.last_moment() - run_began_);
    }
    settle();
    trace_.end(*run_);
}

void LogBuilder::finish() {
    console_over_ = true;
    if (run_ != nullptr) {
        end_run(run_->end);
        run_ = nullptr;
    }
}

// Iterations that follow each other faster than the tool's own pause come from a saved console:
// its times are those of the disk.
void LogBuilder::doubt_arrival_times() {
    if (run_->times != TimeSource::arrival || run_->started == 0 ||
        clock_ - current_.began >= shortest_pause) {
        return;
    }
    run_->times = TimeSource::none;
    run_->began.clear();
    run_->phase_seconds = {};
    run_->phase_series = {};
    run_->iteration_seconds = {};
    run_->iteration_series = {};
    run_->worst.forget_times();
    for (LimitTally& tally : run_->limits) {
        if (tally.limit.is_of_time()) {
            tally.forget();
        }
    }
    run_->timeline.forget_times();
    for (Iteration& iteration : run_->iterations) {
        iteration.forget_times();
    }
    current_.record.forget_times();
}

void LogBuilder::begin_iteration() {
    if (run_ == nullptr) {
        begin_run();
    }
    doubt_arrival_times();
    end_iteration(true);
    current_.begin(run_->started, moment(), run_began_);
    ++run_->started;
    current_.first_line = log_.lines;
    console_.names().close();
}

void LogBuilder::end_iteration(bool complete) {
    if (!current_.open) {
        return;
    }
    if (complete) {
        conclude_missing_failure();
    }
    commit_pending();
    const bool passed = complete && current_.mode_passed;
    current_.close_phase(passed ? Verdict::passed : Verdict::unfinished, moment());
    current_.record.outcome = current_.outcome(run_->mode, complete);
    current_.set_throughput();
    current_.set_signal();
    tally_iteration();
    current_.open = false;
    current_.phase = Phase::none;
}

void LogBuilder::tally_iteration() {
    Iteration& record = current_.record;
    if (moment().known) {
        record.seconds = static_cast<float>(current_.mark - current_.began);
        run_->iteration_seconds.add(static_cast<float>(clock_ - current_.began));
    }
    if (record.throughput >= 0) {
        run_->throughput.add(record.throughput);
        run_->throughput_series.add(record.number, record.throughput);
    }
    if (record.outcome != Outcome::unfinished) {
        run_->iteration_series.add(record.number, record.seconds);
    }
    run_->signal.add(record.signal);
    run_->signal_series.add(record.number, record.signal);
    ++run_->outcomes.at(static_cast<std::size_t>(record.outcome));
    run_->warned += record.warned ? 1 : 0;
    run_->evidence.mode_passes += current_.mode_passed ? 1 : 0;
    for (std::size_t i = 0; i < phase_count; ++i) {
        const PhaseRecord& phase = record.phases[i];
        if (phase.verdict != Verdict::none) {
            ++run_->verdicts[i].at(static_cast<std::size_t>(phase.verdict));
        }
        if (phase.was_completed()) {
            run_->phase_seconds[i].add(phase.seconds);
            run_->phase_series[i].add(record.number, phase.seconds);
        }
        run_->evidence.judged[i] += current_.judged_phases[i] ? 1 : 0;
    }
    if (run_->iterations.size() < most_detailed_iterations) {
        run_->iterations.push_back(record);
    }
    run_->timeline.add(record);
    tally_limits(*run_, record);
    note_console_lines();
}

// What ends an iteration is the line behind it, or the end of the console.
void LogBuilder::note_console_lines() {
    const std::size_t behind = console_over_ ? 0 : 1;
    note_worst(*run_, current_.record, failures_.recent(),
               {current_.first_line, std::max(current_.first_line, log_.lines - behind)}, behind);
}

void LogBuilder::end_of_results() {
    if (run_->end == RunEnd::open) {
        end_iterations(RunEnd::finished, true);
    }
}

void LogBuilder::end_iterations(RunEnd end, bool complete) {
    end_iteration(complete);
    leave_loop(end);
}

void LogBuilder::leave_loop(RunEnd end) {
    run_->end = end;
    run_over_ = true;
}

void LogBuilder::interrupted() {
    // A mode that had closed its session had returned: its code was recorded.
    const bool returned = current_.open && current_.connections_closed >= 2;
    if (current_.open && current_.pending) {
        const PendingFailure& pending = *current_.pending;
        ++run_->causes.at(index_of(pending.cause)).unrecorded;
        if (pending.detail < run_->failures.size()) {
            run_->failures[pending.detail].unrecorded = true;
        }
        current_.pending.reset();
    } else if (returned) {
        conclude_missing_failure();
    }
    end_iterations(RunEnd::interrupted, returned && current_.mode_passed);
}

} // namespace wivex::report

// SPDX-License-Identifier: Apache-2.0
#include "writers/live_view.hpp"

#include "common/words.hpp"
#include "model/limit_verdict.hpp"
#include "model/verdict.hpp"
#include "writers/live_limits.hpp"
#include "writers/run_words.hpp"
#include "writers/summary.hpp"

#include <algorithm>
#include <cmath>
#include <optional>

namespace wivex::report {

namespace {

constexpr std::size_t least_columns = 20;

// The last failure that ended something, of one iteration or of all.
const Failure* last_failure(const Run& run, std::optional<std::uint32_t> iteration = {}) {
    const auto found =
        std::find_if(run.failures.rbegin(), run.failures.rend(), [&](const Failure& failure) {
            return !failure.warning && (!iteration || failure.iteration == *iteration);
        });
    return found == run.failures.rend() ? nullptr : &*found;
}

// Iterations bear the tool's numbers, which count from 0; their place among all counts from 1.
std::string numbered(std::uint32_t number, std::uint32_t all) {
    const std::string text = std::to_string(number);
    return all == 0 ? text
                    : text + " (" + std::to_string(number + 1) + " of " + std::to_string(all) + ")";
}

// A clock that ticks shows whole seconds only.
std::string ticking(double seconds) {
    const double whole = std::floor(seconds);
    return whole < 60 ? std::to_string(static_cast<int>(std::max(0.0, whole))) + " s"
                      : duration_text(whole);
}

std::string counts(const Run& run) {
    std::string text = "passed " + std::to_string(run.count(Outcome::passed)) + "   failed " +
                       std::to_string(run.failed());
    if (run.warned != 0) {
        text += "   warned " + std::to_string(run.warned);
    }
    return text;
}

std::string bar(std::uint32_t done, std::uint32_t all, std::size_t columns) {
    const std::size_t width = columns - 9;
    const auto share = std::min(1.0, static_cast<double>(done) / all);
    const auto full = static_cast<std::size_t>(share * static_cast<double>(width));
    std::string text = "[" + std::string(full, '#') + std::string(width - full, '.') + "] ";
    const std::string percent = std::to_string(static_cast<int>(share * 100));
    return text + std::string(3 - percent.size(), ' ') + percent + " %";
}

std::string phase_words(const Now& state, double now) {
    if (!state.running) {
        return "the run is over";
    }
    if (!state.in_iteration) {
        return "start";
    }
    const std::string_view phase =
        state.phase == Phase::none ? std::string_view("pause") : name_of(state.phase);
    return std::string(phase) + " for " + ticking(now - state.phase_since);
}

std::string throughput_words(const Run& run, const Now& state) {
    const bool measuring = state.phase == Phase::traffic || state.phase == Phase::serve;
    std::string text;
    if (measuring && state.megabits_per_second >= 0) {
        const double rate = state.megabits_per_second;
        text += "   throughput " + live_figure(run, Figure::throughput, Statistic::each, rate,
                                               figure_text(rate) + " Mbit/s");
    }
    if (run.throughput.count != 0) {
        const double mean = run.throughput.mean();
        text += "   mean " + live_figure(run, Figure::throughput, Statistic::mean, mean,
                                         figure_text(mean) + " Mbit/s");
    }
    return text;
}

// What came before on this console and did not pass.
std::string earlier_runs(const Log& log) {
    std::uint32_t others = log.dropped_runs;
    std::uint32_t passed = log.dropped_verdicts.at(static_cast<std::size_t>(RunVerdict::passed));
    for (std::size_t i = 0; i + 1 < log.runs.size(); ++i) {
        ++others;
        passed += judge(log.runs[i]).is_green() ? 1 : 0;
    }
    return passed == others ? ""
                            : count_text(others - passed, "earlier run", "earlier runs") +
                                  " of this console did not pass";
}

} // namespace

std::string LiveView::fitted(std::string line) const {
    const std::size_t width = std::max(options_.columns, least_columns) - 1;
    if (line.size() > width) {
        line.resize(width);
        // Not in the middle of a character of several bytes.
        while (!line.empty() && (static_cast<unsigned char>(line.back()) & 0x80U) != 0) {
            line.pop_back();
        }
    }
    return line;
}

std::string LiveView::erase() const {
    if (drawn_ == 0) {
        return "\r";
    }
    return "\r\x1b[" + std::to_string(drawn_) + "A\x1b[J";
}

double LiveView::seconds_left(const Progress& progress, double now) const {
    const Run& run = *progress.run();
    if (options_.iterations == 0 || run.iteration_seconds.count == 0) {
        return std::nan("");
    }
    const double mean = run.iteration_seconds.mean();
    const Now state = progress.now;
    const std::uint32_t done = run.ended();
    const double rest = options_.iterations > done ? options_.iterations - done : 0;
    const double used = state.in_iteration ? std::min(mean, now - state.iteration_since) : 0;
    return std::max(0.0, rest * mean - used);
}

std::string LiveView::title_line(const Run& run) const {
    std::string title = "wivex  " + std::string(title_of(run.mode));
    if (!run.device.vendor_id.empty()) {
        title += "  module " + run.device.vendor_id + ":" + run.device.product_id;
    }
    if (run.started != 0) {
        title += "  iteration " + numbered(run.started - 1, options_.iterations);
    }
    return title;
}

std::string LiveView::time_line(const Progress& progress, double now) const {
    std::string time = "time: " + ticking(now - progress.now.run_since);
    const double left = seconds_left(progress, now);
    return std::isnan(left) ? time : time + "   left: about " + ticking(left);
}

std::vector<std::string> LiveView::screen(const Progress& progress, double now) const {
    const Run* const run = progress.run();
    if (run == nullptr) {
        return {"wivex: waiting for the run to begin"};
    }
    std::vector<std::string> lines{title_line(*run)};
    if (options_.iterations != 0) {
        lines.push_back(
            bar(run->ended(), options_.iterations, std::max(options_.columns, least_columns)));
    }
    lines.push_back(counts(*run));
    lines.push_back("now: " + phase_words(progress.now, now) +
                    throughput_words(*run, progress.now));
    lines.push_back(time_line(progress, now));
    const Failure* const failure = last_failure(*run);
    if (failure != nullptr) {
        lines.push_back("last failure: iteration " + std::to_string(failure->iteration) + ", " +
                        failure_words(*failure));
    }
    if (const std::string broken = broken_limits_line(*run); !broken.empty()) {
        lines.push_back(broken);
    }
    if (const std::string earlier = earlier_runs(progress.log); !earlier.empty()) {
        lines.push_back(earlier);
    }
    return lines;
}

std::string LiveView::iteration_line(const Run& run, const Iteration& iteration) const {
    // Above a view that shows where the run stands, the number alone is enough.
    const std::uint32_t all = options_.redraw ? 0 : options_.iterations;
    std::string line = "iteration " + numbered(iteration.number, all) + " " +
                       std::string(name_of(iteration.outcome));
    if (!std::isnan(iteration.seconds)) {
        line += ", " + duration_text(iteration.seconds);
    }
    if (iteration.throughput >= 0) {
        line += ", " + figure_text(iteration.throughput) + " Mbit/s";
    }
    line += broken_by_words(run, iteration);
    if (const Failure* const failure = last_failure(run, iteration.number)) {
        line += ", " + failure_words(*failure);
    }
    return line;
}

// Of iterations that are not kept in detail, only counts are known.
std::string LiveView::news_behind_details(const Run& run) {
    const auto failed_in_detail = static_cast<std::uint32_t>(std::ranges::count_if(
        run.iterations, [](const Iteration& iteration) { return iteration.failed(); }));
    const std::uint32_t behind = run.failed() - failed_in_detail;
    if (behind <= told_failed_behind_) {
        return {};
    }
    const std::uint32_t more = behind - told_failed_behind_;
    told_failed_behind_ = behind;
    return fitted(count_text(more, "more iteration", "more iterations") +
                  " failed, up to iteration " + std::to_string(run.ended() - 1)) +
           "\n";
}

// What has happened since the last call and stays on the screen: every iteration as a plain line,
// or only the failures above a view that is redrawn.
std::string LiveView::news(const Progress& progress) {
    const Run* const run = progress.run();
    if (run == nullptr) {
        return {};
    }
    const std::uint64_t runs = progress.log.runs.size() + progress.log.dropped_runs;
    if (runs != told_runs_) {
        told_runs_ = runs;
        told_iterations_ = 0;
        told_failed_behind_ = 0;
    }
    std::string text;
    for (; told_iterations_ < run->iterations.size(); ++told_iterations_) {
        const Iteration& iteration = run->iterations[told_iterations_];
        if (!options_.redraw || iteration.outcome != Outcome::passed ||
            !broken_by(*run, iteration).empty()) {
            text += fitted(iteration_line(*run, iteration)) + "\n";
        }
    }
    if (run->iterations.size() < run->ended()) {
        text += news_behind_details(*run);
    }
    return text;
}

std::string LiveView::update(const Progress& progress, double now) {
    std::string text = news(progress);
    if (!options_.redraw) {
        return text;
    }
    text.insert(0, erase());
    const std::vector<std::string> lines = screen(progress, now);
    for (const std::string& line : lines) {
        text += painted(fitted(line)) + "\n";
    }
    drawn_ = lines.size();
    return text;
}

std::string LiveView::finish(const Progress& progress) {
    std::string text = options_.redraw ? erase() : "";
    drawn_ = 0;
    return text + news(progress) + summary(progress.log);
}

} // namespace wivex::report

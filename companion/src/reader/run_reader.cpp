// SPDX-License-Identifier: Apache-2.0
#include "reader/run_reader.hpp"

#include "figures.hpp"
#include "printable.hpp"

#include <algorithm>

namespace wivex::report {

namespace {

// The phase that follows the last one that has a verdict.
Phase next_phase(const OpenIteration& iteration, Mode mode) {
    Phase last = Phase::module;
    for (const Phase phase : all_phases()) {
        last = iteration.record.phase(phase).verdict != Verdict::none ? phase : last;
    }
    return phase_after(mode, last);
}

} // namespace

RunReader::RunReader(ReaderOptions options) : options_(options) {}

void RunReader::feed(std::string_view bytes, double now) {
    log_.bytes += bytes.size();
    if (!stamps_.active()) {
        now_ = now;
    }
    splitter_.feed(bytes, [this](std::string_view line) { take_line(line); });
}

void RunReader::finish(double now) {
    if (!stamps_.active()) {
        now_ = now;
    }
    splitter_.finish([this](std::string_view line) { take_line(line); });
    if (run_ != nullptr) {
        end_run(run_->end);
        run_ = nullptr;
    }
}

Now RunReader::now() const {
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

void RunReader::take_line(std::string_view line) {
    ++log_.lines;
    line = stamps_.strip(line, recogniser_);
    if (stamps_.active()) {
        now_ = stamps_.seconds();
    }
    failures_.add_line(run_, line);
    if (take_name(line) || line.empty()) {
        return;
    }
    const std::span<const Finding> findings = recogniser_.read(line);
    for (const Finding& finding : findings) {
        take_finding(finding);
    }
    if (findings.empty() && !take_figures(line)) {
        take_other(line);
    }
}

bool RunReader::take_name(std::string_view line) {
    std::string_view name;
    const ScanList::Taken taken = names_.take(line, name);
    if (taken == ScanList::Taken::fresh) {
        see_access_point({}, name, 0, {});
    }
    return taken != ScanList::Taken::no;
}

bool RunReader::take_figures(std::string_view line) {
    if (const auto figure = read_traffic(line)) {
        if (run_ == nullptr || !current_.open) {
            return true;
        }
        if (current_.phase != Phase::serve && run_->mode != Mode::go) {
            enter(Phase::traffic);
        }
        current_.take_rate(static_cast<float>(figure->megabits_per_second), figure->is_sum,
                           figure->is_total());
        return true;
    }
    if (const auto found = read_access_point(line)) {
        see_access_point(found->bssid, found->ssid, found->frequency,
                         static_cast<float>(found->signal));
        return true;
    }
    return false;
}

// A line of another program, or one of the tool that nobody has told this program about.
void RunReader::take_other(std::string_view line) {
    ++log_.unknown_lines;
    if (Recogniser::looks_like_the_tool(line)) {
        if (run_ == nullptr && line.starts_with(tool_prefix)) {
            begin_run();
        }
        if (run_ != nullptr) {
            run_->evidence.unknown.add(printable(line));
        }
        return;
    }
    current_.sub_cause = std::max(current_.sub_cause, read_sub_cause(line));
}

void RunReader::see_access_point(std::string_view bssid, std::string_view ssid, int frequency,
                                 std::optional<float> signal) {
    if (run_ == nullptr) {
        return;
    }
    auto& list = run_->access_points;
    const std::string name = printable(ssid, 140);
    const auto found = std::ranges::find_if(list, [&](const AccessPoint& point) {
        return point.bssid == bssid && (point.ssid == name || !bssid.empty());
    });
    AccessPoint* point = found == list.end() ? nullptr : &*found;
    if (point == nullptr) {
        if (list.size() == most_access_points) {
            ++run_->unlisted_access_points;
            return;
        }
        point = &list.emplace_back();
        point->bssid = std::string(bssid);
    }
    point->ssid = name;
    point->frequency = frequency;
    ++point->times_seen;
    if (signal) {
        point->signal.add(*signal);
    }
}

} // namespace wivex::report

// SPDX-License-Identifier: Apache-2.0
#include "reader/take.hpp"

#include "common/printable.hpp"
#include "reader/access_points.hpp"

#include <algorithm>

namespace wivex::report {

namespace {

void begin_run(LogBuilder& builder, const RunBegins& begins) {
    constexpr std::size_t longest_build = 85;
    builder.begin_run();
    builder.run()->evidence.began = true;
    builder.run()->device.build = printable(begins.build, longest_build);
}

bool is_module_hint(const ToolText& text) {
    const auto* const event = std::get_if<CourseEvent>(&text.told);
    return event != nullptr && std::holds_alternative<ModuleHint>(*event);
}

// Whether `text` can only stand in the run after the one that is open.
bool is_of_next_run(LogBuilder& builder, const ToolText& text, bool of_iteration) {
    const Run& run = *builder.run();
    const bool of_start = std::holds_alternative<Starting>(text.told);
    return run.end != RunEnd::not_started &&
           ((builder.is_run_over() && (of_iteration || of_start)) ||
            (of_start && run.started != 0));
}

// A console may begin in the middle of a run, or have lost lines: what is only said in a run, or
// in an iteration, opens one.
void open_what_is_missing(LogBuilder& builder, const ToolText& text) {
    if (!text.is_unmistakable) {
        return;
    }
    const bool of_iteration = text.phase != Phase::none || text.cause != Cause::none;
    if (builder.run() == nullptr || is_of_next_run(builder, text, of_iteration)) {
        builder.begin_run();
    }
    if (builder.is_run_over()) {
        return;
    }
    const OpenIteration& current = builder.iteration();
    const bool module_again = text.phase == Phase::module &&
                              (!current.open || current.moved_on ||
                               (current.was_judged(Phase::module) && !is_module_hint(text)));
    const bool driver_again = text.phase == Phase::driver && current.was_judged(Phase::driver);
    if (module_again || driver_again || (of_iteration && !current.open)) {
        builder.begin_iteration();
    }
}

void take_text(LogBuilder& builder, const ToolText& text) {
    if (const auto* const begins = std::get_if<RunBegins>(&text.told)) {
        begin_run(builder, *begins);
        return;
    }
    open_what_is_missing(builder, text);
    Run* const run = builder.run();
    if (run == nullptr) {
        return;
    }
    if (run->mode == Mode::unknown) {
        run->mode = text.mode;
    }
    run->has_standard_error = run->has_standard_error || text.on_standard_error;
    OpenIteration& current = builder.iteration();
    current.mode_seen = current.mode_seen || text.mode != Mode::unknown;
    if (const auto* const fact = std::get_if<Fact>(&text.told)) {
        take_fact(builder, text, *fact);
    } else if (const auto* const event = std::get_if<CourseEvent>(&text.told)) {
        take_course(builder, text, *event);
    } else if (const auto* const ending = std::get_if<Ending>(&text.told)) {
        take_ending(builder, *ending);
    }
}

class Taker {
public:
    explicit Taker(LogBuilder& builder) : builder_(builder) {}

    void operator()(const ToolText& text) const {
        take_text(builder_, text);
    }

    void operator()(const ListedName& name) const {
        if (name.is_fresh && builder_.run() != nullptr) {
            see_access_point(*builder_.run(), {name.ssid, {}, 0, {}});
        }
    }

    void operator()(const TrafficFigure& figure) const {
        OpenIteration& current = builder_.iteration();
        if (builder_.run() == nullptr || !current.open) {
            return;
        }
        if (current.phase != Phase::serve && builder_.run()->mode != Mode::go) {
            builder_.enter(Phase::traffic);
        }
        current.take_rate(static_cast<float>(figure.megabits_per_second), figure.is_sum,
                          figure.is_total());
    }

    void operator()(const ListedAccessPoint& point) const {
        if (builder_.run() != nullptr) {
            see_access_point(*builder_.run(), {point.ssid, point.bssid, point.frequency,
                                               static_cast<float>(point.signal)});
            builder_.iteration().heard.hear(point.bssid, point.ssid,
                                            static_cast<float>(point.signal));
        }
    }

    void operator()(const Connected& connected) const {
        builder_.add_unknown_line();
        builder_.iteration().heard.connect(connected.bssid);
    }

    void operator()(const UnknownText& unknown) const {
        builder_.add_unknown_line();
        if (builder_.run() == nullptr && unknown.shows_run) {
            builder_.begin_run();
        }
        if (builder_.run() != nullptr) {
            builder_.run()->evidence.unknown.add(printable(unknown.line));
        }
    }

    void operator()(const OtherLine& other) const {
        builder_.add_unknown_line();
        OpenIteration& current = builder_.iteration();
        current.sub_cause = std::max(current.sub_cause, other.sub_cause);
    }

private:
    LogBuilder& builder_;
};

} // namespace

void take(LogBuilder& builder, const Finding& finding) {
    std::visit(Taker(builder), finding);
}

} // namespace wivex::report

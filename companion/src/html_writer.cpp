#include "html_writer.hpp"

#include "charts.hpp"
#include "html_text.hpp"
#include "page_style.hpp"

#include <algorithm>
#include <cmath>
#include <set>
#include <span>

namespace wivex::report {

namespace {

constexpr double noteworthy_drift = 10;
// A phase that never takes longer has no curve worth a picture.
constexpr float shortest_drawn = 0.05F;

std::string plural_iterations(std::uint32_t count) {
    return count_text(count, "iteration", "iterations");
}

std::uint32_t failed_iterations(const Run& run) {
    return run.count(Outcome::failed) + run.count(Outcome::uncounted);
}

std::string_view verdict_class(const Run& run) {
    if (failed_iterations(run) != 0 || run.end == RunEnd::not_started) {
        return "failed";
    }
    const bool served = run.mode == Mode::go && run.end == RunEnd::interrupted;
    return run.is_clean() || served ? "passed" : "open";
}

std::string_view end_words(const Run& run) {
    switch (run.end) {
    case RunEnd::interrupted:
        return "interrupted by ^C";
    case RunEnd::killed:
        return "killed: the tool wrote no result file";
    case RunEnd::open:
        return "the console ends in the middle of the run";
    case RunEnd::broke_off:
        return "broken off: another run begins without an end of this one";
    case RunEnd::softap:
        return "softAP mode: one iteration, no result file";
    case RunEnd::not_started:
        return "the tool ended before its first iteration";
    default:
        return "finished";
    }
}

std::string tile(std::string_view name, const std::string& value, bool bad = false) {
    return "<div><dt>" + std::string(name) + "</dt><dd" + (bad ? " class=\"bad\"" : "") + ">" +
           value + "</dd></div>\n";
}

std::string tiles(const Run& run) {
    std::string text = "<dl class=\"tiles\">\n";
    text += tile("Iterations", std::to_string(run.started));
    text += tile("Passed", std::to_string(run.count(Outcome::passed)));
    text += tile("Failed", std::to_string(failed_iterations(run)), failed_iterations(run) != 0);
    if (run.count(Outcome::unfinished) != 0) {
        text += tile("Unfinished", std::to_string(run.count(Outcome::unfinished)));
    }
    if (run.throughput.count != 0) {
        text +=
            tile("Throughput, mean", figure_text(run.throughput.mean()) + " <small>Mbit/s</small>");
    }
    if (run.iteration_seconds.count != 0) {
        text += tile("Iteration, mean", duration_text(run.iteration_seconds.mean()));
    }
    if (run.clients_served != 0) {
        text += tile("Clients served", std::to_string(run.clients_served));
    }
    return text + "</dl>\n";
}

std::string card(std::string_view id, std::string_view title, const std::string& inner) {
    return R"(<section class="card" id=")" + std::string(id) + "\">\n<h3>" + std::string(title) +
           "</h3>\n" + inner + "</section>\n";
}

std::string legend_item(std::string_view kind, std::string_view mark, std::string_view words) {
    return R"(<li><span class="cell )" + std::string(kind) + R"(" aria-hidden="true">)" +
           std::string(mark) + "</span>" + std::string(words) + "</li>";
}

std::string legend(const Run& run) {
    std::string text = "<ul class=\"legend\">" + legend_item("passed", "", "passed");
    if (run.warned != 0) {
        text += legend_item("warned", "!", "passed with a warning");
    }
    if (run.count(Outcome::failed) != 0) {
        text += legend_item("failed", "\u00d7", "failed");
    }
    if (run.count(Outcome::uncounted) != 0) {
        text += legend_item("uncounted", "\u2212", "failed, not counted by the tool");
    }
    if (run.count(Outcome::unfinished) != 0) {
        text += legend_item("unfinished", "?", "unfinished");
    }
    return text + "</ul>\n";
}

std::string timeline(const Run& run, const std::string& prefix) {
    std::string text = iteration_strip(run, prefix) + legend(run);
    if (run.timeline.width() > 1) {
        text += "<p class=\"soft\">A cell stands for " + plural_iterations(run.timeline.width()) +
                "; its lower part is the share that failed.</p>\n";
    }
    return card(prefix + "timeline", "Iterations", text);
}

bool examined(const Run& run, int test_case) {
    if (test_case <= 2 || run.failures_of_test_case(test_case) != 0) {
        return true;
    }
    const auto judged = [&](Phase phase) {
        return std::ranges::any_of(run.verdicts.at(index_of(phase)),
                                   [](std::uint32_t count) { return count != 0; });
    };
    return (test_case == 3 && judged(Phase::mac)) || (test_case == 4 && judged(Phase::loopback)) ||
           test_case == test_case_of(run.mode);
}

std::string test_cases(const Run& run, const std::string& prefix) {
    std::string text = "<table><thead><tr><th>Test case</th><th>Examines</th>"
                       "<th class=\"number\">Recorded failures</th></tr></thead><tbody>\n";
    for (int number = 1; number <= 9; ++number) {
        if (!examined(run, number)) {
            continue;
        }
        const std::uint32_t failures = run.failures_of_test_case(number);
        text += "<tr><th scope=\"row\">" + std::to_string(number) + "</th><td>" +
                std::string(title_of_test_case(number)) + "</td><td class=\"number " +
                (failures == 0 ? "ok\">passed" : "bad\">" + std::to_string(failures)) +
                "</td></tr>\n";
    }
    text += "</tbody></table>\n";
    if (run.failures_without_test_case() != 0) {
        text += "<p class=\"amber\">" + plural_iterations(run.failures_without_test_case()) +
                " could not reach the supplicant, and the console does not tell in which mode. "
                "Give the mode with --mode to have them counted.</p>\n";
    }
    if (run.result_written) {
        text += "<p class=\"soft\">These are the counts of the result file " +
                escaped(run.result_file) + ".</p>\n";
    } else {
        text += "<p class=\"soft\">No result file was written on this console; it would hold "
                "these counts.</p>\n";
    }
    return card(prefix + "testcases", "Test cases", text);
}

std::string verdict_counts(const Run& run, Phase phase) {
    const auto& counts = run.verdicts.at(index_of(phase));
    const auto count = [&](Verdict verdict) {
        return counts.at(static_cast<std::size_t>(verdict));
    };
    std::string text;
    const auto add = [&](Verdict verdict, std::string_view style, std::string_view words) {
        if (count(verdict) != 0) {
            text += (text.empty() ? "" : ", ");
            text += "<span class=\"" + std::string(style) + "\">" + std::to_string(count(verdict)) +
                    " " + std::string(words) + "</span>";
        }
    };
    add(Verdict::failed, "bad", "failed");
    add(Verdict::warned, "amber", "warned");
    add(Verdict::unfinished, "soft", "unfinished");
    add(Verdict::passed, "ok", "passed");
    return text;
}

std::string drift_words(std::span<const CurvePoint> points, std::string_view unit) {
    const Drift drift = drift_of(points);
    if (!drift.known) {
        return "";
    }
    const bool drifts = std::fabs(drift.percent()) >= noteworthy_drift;
    std::string text = drifts ? "<p class=\"amber\">Drifts" : "<p class=\"soft\">Steady";
    text += ": mean of the first third " + figure_text(drift.early) + ", of the last third " +
            figure_text(drift.late) + " " + std::string(unit) + " (" +
            (drift.percent() > 0 ? "+" : "") + figure_text(drift.percent()) + " %).</p>\n";
    return text;
}

std::string phase_row(const Run& run, Phase phase) {
    const std::vector<CurvePoint> points = seconds_points(run, phase);
    const Spread& seconds = run.phase_seconds.at(index_of(phase));
    const std::string name(name_of(phase));
    std::string text = "<tr><th scope=\"row\">" + name + "</th><td class=\"verdicts\">" +
                       verdict_counts(run, phase) + "</td>";
    if (run.times == TimeSource::none) {
        return text + "</tr>\n";
    }
    text += "<td class=\"wide\">" +
            (seconds.most < shortest_drawn ? "" : curve(points, run.started, {name, "s"}, true)) +
            "</td>";
    const auto value = [&](std::string_view label, double number) {
        text += R"(<td class="number" data-name=")" + std::string(label) + R"(">)" +
                (seconds.count == 0 ? "" : duration_text(number)) + "</td>";
    };
    value("least", seconds.least);
    value("mean", seconds.mean());
    value("most", seconds.most);
    return text + "</tr>\n";
}

std::string drifting_phases(const Run& run) {
    std::string text;
    for (const Phase phase : all_phases()) {
        const std::vector<CurvePoint> points = seconds_points(run, phase);
        const Drift drift = drift_of(points);
        if (drift.known && drift.late > 0.5 && std::fabs(drift.percent()) >= noteworthy_drift) {
            text += "<p class=\"amber\">" + std::string(name_of(phase)) +
                    " drifts: mean of the first third " + duration_text(drift.early) +
                    ", of the last third " + duration_text(drift.late) + ".</p>\n";
        }
    }
    return text;
}

std::string phases(const Run& run, const std::string& prefix) {
    const bool timed = run.times != TimeSource::none;
    std::string text = "<table class=\"phases\"><thead><tr><th>Phase</th><th>Verdicts</th>";
    if (timed) {
        text += "<th>Time over the iterations</th><th class=\"number\">Least</th>"
                "<th class=\"number\">Mean</th><th class=\"number\">Most</th>";
    }
    text += "</tr></thead><tbody>\n";
    for (const Phase phase : all_phases()) {
        if (!verdict_counts(run, phase).empty()) {
            text += phase_row(run, phase);
        }
    }
    text += "</tbody></table>\n" + drifting_phases(run);
    if (!timed) {
        text += "<p class=\"soft\">Times are unknown: this console was read after the run and "
                "carries no time stamps.</p>\n";
    }
    return card(prefix + "phases", "Phases", text);
}

std::string throughput(const Run& run, const std::string& prefix) {
    const std::vector<CurvePoint> points = throughput_points(run);
    if (points.empty()) {
        return "";
    }
    const Spread& all = run.throughput;
    std::string text = curve(points, run.started, {"Throughput", "Mbit/s"}, false);
    text += "<p>Least " + figure_text(all.least) + ", mean " + figure_text(all.mean()) + ", most " +
            figure_text(all.most) + " Mbit/s in " + plural_iterations(all.count) + ".</p>\n";
    text += drift_words(points, "Mbit/s");
    return card(prefix + "throughput", "Throughput, Mbit/s", text);
}

std::string excerpt(const Failure& failure, const std::string& anchor) {
    std::string text = "<h4" + anchor + ">Iteration " + std::to_string(failure.iteration) +
                       " <span class=\"soft\">(console line " + std::to_string(failure.line) + ")";
    if (failure.unrecorded) {
        text += " interrupted before the tool counted it";
    }
    if (failure.concluded) {
        text += " concluded from what did not come: standard error is not in this console";
    }
    text += "</span></h4>\n<pre>";
    for (std::size_t i = 0; i < failure.lines.size(); ++i) {
        const std::string line = escaped(failure.lines[i]);
        text += i == failure.shown_at && !failure.concluded ? "<mark>" + line + "</mark>\n"
                                                            : line + "\n";
    }
    return text + "</pre>\n";
}

std::string cause_summary(const Run& run, Cause cause) {
    const CauseRow& row = row_of(cause);
    const CauseCount& count = run.causes.at(index_of(cause));
    const int test_case = test_case_of(cause, run.mode);
    std::string text =
        "<summary><b>" + std::string(name_of(row.phase)) + ": " + escaped(row.words) + "</b> ";
    if (count.failures != 0) {
        text += "<span class=\"bad\">" + count_text(count.failures, "time", "times") + "</span>";
    }
    if (count.warnings != 0) {
        text += " <span class=\"amber\">" + count_text(count.warnings, "time", "times") +
                ", warning only</span>";
    }
    if (count.unrecorded != 0) {
        text += " <span class=\"soft\">" + count_text(count.unrecorded, "time", "times") +
                " at the interrupt</span>";
    }
    text += "<br/><span class=\"soft\">";
    if (test_case != 0) {
        text += "test case " + std::to_string(test_case) + ", code " + std::to_string(row.code) +
                (records_of(cause, run.mode) > 1 ? ", counted twice" : "");
    } else if (count.failures != 0) {
        text += run.mode == Mode::unknown ? "mode unknown" : "not counted in the result file";
    } else {
        text += "the test went on";
    }
    if (count.failures + count.warnings > 1) {
        text += "; iterations " + std::to_string(count.first_iteration) + " to " +
                std::to_string(count.last_iteration);
    }
    return text + "</span></summary>\n";
}

// The first one at once, the others behind one more click.
std::string excerpts(const Run& run, Cause cause, const std::string& prefix,
                     std::set<std::uint32_t>& anchored) {
    const CauseCount& count = run.causes.at(index_of(cause));
    const std::size_t all = count.failures + count.warnings + count.unrecorded;
    std::string text;
    std::size_t shown = 0;
    for (const Failure& failure : run.failures) {
        if (failure.cause != cause) {
            continue;
        }
        const bool first = anchored.insert(failure.iteration).second;
        const std::string id = prefix + "i" + std::to_string(failure.iteration);
        if (shown == 1) {
            text += "<details class=\"more\"><summary>" +
                    std::to_string(run.causes.at(index_of(cause)).detailed - 1) +
                    " more</summary>\n";
        }
        text += excerpt(failure, first ? " id=\"" + id + "\"" : "");
        ++shown;
    }
    if (all > shown) {
        text += "<p class=\"soft\">The first " + std::to_string(shown) + " of " +
                std::to_string(all) + " are shown.</p>\n";
    }
    return text + (shown > 1 ? "</details>\n" : "");
}

std::string failures(const Run& run, const std::string& prefix) {
    std::vector<Cause> causes;
    for (std::size_t i = 0; i < cause_count; ++i) {
        const CauseCount& count = run.causes[i];
        if (count.failures + count.warnings + count.unrecorded != 0) {
            causes.push_back(static_cast<Cause>(i));
        }
    }
    if (causes.empty()) {
        return "";
    }
    std::ranges::stable_sort(causes, std::greater<>(),
                             [&](Cause cause) { return run.causes.at(index_of(cause)).failures; });
    std::set<std::uint32_t> anchored;
    std::string text;
    for (const Cause cause : causes) {
        text += "<details" + std::string(cause == causes.front() ? " open=\"\"" : "") + ">" +
                cause_summary(run, cause) + excerpts(run, cause, prefix, anchored) + "</details>\n";
    }
    return card(prefix + "failures", "Failures by cause", text);
}

std::string fact(std::string_view name, const std::string& value) {
    if (value.empty()) {
        return "";
    }
    return "<dt>" + std::string(name) + "</dt><dd>" + escaped(value) + "</dd>\n";
}

std::string facts(const Run& run, const std::string& prefix) {
    const Device& device = run.device;
    std::string keys;
    for (const std::string& key : run.unknown_keys) {
        keys += (keys.empty() ? "" : ", ") + key;
    }
    std::string text = "<dl class=\"facts\">\n";
    text += fact("Module", device.vendor_id.empty()
                               ? ""
                               : device.vendor_id + ":" + device.product_id + " (chip type " +
                                     std::to_string(device.chip_type) + ")");
    text += fact("MAC, kernel", device.mac_kernel);
    text += fact("MAC, chip", device.mac_chip);
    text += fact("Last address", device.address);
    text += fact("Tool", device.build);
    text += fact("Configuration", device.config_file);
    text += fact("Unknown keys in it", keys);
    text += fact("Result file", run.result_file);
    text += fact("Began", run.began);
    text += fact("Took", std::isnan(run.seconds) ? "" : duration_text(run.seconds));
    text += fact("Times from", run.times == TimeSource::arrival  ? "arrival of the lines"
                               : run.times == TimeSource::stamps ? "time stamps in the console"
                                                                 : "nowhere: unknown");
    return card(prefix + "device", "Device and run", text + "</dl>\n");
}

std::string access_points(const Run& run, const std::string& prefix) {
    if (run.access_points.empty()) {
        return "";
    }
    std::string text = "<table><thead><tr><th>SSID</th><th>BSSID</th>"
                       "<th class=\"number\">MHz</th><th class=\"number\">Seen</th>"
                       "<th class=\"number\">Signal, dBm</th></tr></thead><tbody>\n";
    for (const AccessPoint& point : run.access_points) {
        std::string signal = "not told";
        if (point.signal.count != 0) {
            signal = figure_text(point.signal.mean());
            if (point.signal.most > point.signal.least) {
                signal += " (" + figure_text(point.signal.least) + " to " +
                          figure_text(point.signal.most) + ")";
            }
        }
        text += "<tr><td>" + (point.ssid.empty() ? "<i>hidden</i>" : escaped(point.ssid)) +
                "</td><td>" + escaped(point.bssid) + "</td><td class=\"number\">" +
                (point.frequency == 0 ? "" : std::to_string(point.frequency)) +
                "</td><td class=\"number\">" + std::to_string(point.times_seen) +
                "</td><td class=\"number\">" + signal + "</td></tr>\n";
    }
    text += "</tbody></table>\n";
    if (run.unlisted_access_points != 0) {
        text += "<p class=\"soft\">More were seen than fit in this table.</p>\n";
    }
    return card(prefix + "accesspoints", "Access points", text);
}

std::string run_section(const Run& run, std::size_t number, bool only) {
    const std::string prefix = only ? "" : "run" + std::to_string(number) + "-";
    std::string text = R"(<div class="run" id=")" + prefix + "run\">\n<h2 class=\"verdict " +
                       std::string(verdict_class(run)) + R"(">)" + verdict_sentence(run) +
                       "</h2>\n<p class=\"soft\">" + std::string(title_of(run.mode)) + ", " +
                       std::string(end_words(run)) + (run.began.empty() ? "" : ", began ") +
                       escaped(run.began) + "</p>\n";
    if (run.started != 0) {
        text += tiles(run) + timeline(run, prefix) + failures(run, prefix) +
                test_cases(run, prefix) + throughput(run, prefix) + phases(run, prefix) +
                access_points(run, prefix);
    }
    return text + facts(run, prefix) + "</div>\n";
}

std::string run_list(const Log& log) {
    if (log.runs.size() < 2) {
        return "";
    }
    std::string text = "<nav aria-label=\"Runs\"><ol>\n";
    std::size_t number = 1;
    for (const Run& run : log.runs) {
        text += "<li><a href=\"#run" + std::to_string(number) + "-run\">" + verdict_sentence(run) +
                "</a> <span class=\"soft\">" + std::string(title_of(run.mode)) + "</span></li>\n";
        ++number;
    }
    text += "</ol></nav>\n";
    if (log.dropped_runs != 0) {
        text += "<p class=\"soft\">" + count_text(log.dropped_runs, "earlier run", "earlier runs") +
                " on this console are left out.</p>\n";
    }
    return text;
}

} // namespace

std::string verdict_sentence(const Run& run) {
    if (run.end == RunEnd::not_started) {
        return "The run did not start";
    }
    if (run.started == 0) {
        return "No iteration on this console";
    }
    const std::uint32_t failed = failed_iterations(run);
    if (failed != 0) {
        return std::to_string(failed) + " of " + plural_iterations(run.started) + " failed";
    }
    const std::uint32_t passed = run.count(Outcome::passed);
    if (passed == run.started) {
        const std::string warned =
            run.warned == 0 ? "" : ", " + std::to_string(run.warned) + " with a warning";
        return (run.started == 1 ? "The iteration passed"
                                 : "All " + std::to_string(passed) + " iterations passed") +
               warned;
    }
    return std::to_string(passed) + " of " + plural_iterations(run.started) +
           " passed, none failed";
}

std::string write_html(const Log& log) {
    std::string text = "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\"/>\n"
                       "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\"/>\n"
                       "<title>";
    text += log.runs.empty() ? "wivex: no run" : "wivex: " + verdict_sentence(log.runs.back());
    text += "</title>\n<link rel=\"icon\" href=\"data:,\"/>\n<style>";
    text += page_style;
    text += "</style>\n</head>\n<body>\n<main>\n<h1>wivex test report</h1>\n";
    text += run_list(log);
    if (log.runs.empty()) {
        text += "<h2 class=\"verdict open\">No run on this console</h2>\n";
    }
    std::size_t number = 1;
    for (const Run& run : log.runs) {
        text += run_section(run, number, log.runs.size() == 1);
        ++number;
    }
    text += "<p class=\"soft\">Console: " + count_text(log.lines, "line", "lines") + ", " +
            count_text(log.bytes, "byte", "bytes") + ", " +
            count_text(log.unknown_lines, "line", "lines") +
            " of other programs or unknown.</p>\n</main>\n<script>";
    text += page_script;
    text += "</script>\n</body>\n</html>\n";
    return text;
}

} // namespace wivex::report

// SPDX-License-Identifier: Apache-2.0
#include "writers/html_writer.hpp"

#include "common/words.hpp"
#include "model/test_cases.hpp"
#include "model/verdict.hpp"
#include "model/weak_passes.hpp"
#include "writers/charts.hpp"
#include "writers/html_text.hpp"
#include "writers/page.hpp"
#include "writers/page_failures.hpp"
#include "writers/page_figures.hpp"
#include "writers/page_style.hpp"

#include <cmath>

namespace wivex::report {

namespace {

std::uint32_t failed_iterations(const Run& run) {
    return run.count(Outcome::failed) + run.count(Outcome::uncounted);
}

std::string_view style_of(RunVerdict verdict, bool weak = false) {
    switch (verdict) {
    case RunVerdict::passed:
        return weak ? "weak" : "passed";
    case RunVerdict::failed:
        return "failed";
    default:
        return "open";
    }
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

std::string heading(std::string_view style, const std::string& sentence) {
    return "<h2 class=\"verdict " + std::string(style) + "\">" + escaped(sentence) + "</h2>\n";
}

std::string list_of(std::string_view style, const std::vector<std::string>& sentences) {
    if (sentences.empty()) {
        return "";
    }
    std::string text = "<ul class=\"" + std::string(style) + "\">\n";
    for (const std::string& sentence : sentences) {
        text += "<li>" + escaped(sentence) + "</li>\n";
    }
    return text + "</ul>\n";
}

// What its line says about the check of the driver, turned round.
std::string softap_words(const Run& run) {
    const std::string& line = run.evidence.softap_line;
    if (line.empty()) {
        return "";
    }
    const std::string_view meaning =
        line.find("ERROR") != std::string::npos
            ? "The line is inverted: it says that the driver was ready and the interface up. No "
              "access point was tried."
            : "The line is inverted: it says that the driver was not ready or the interface down. "
              "No access point was made.";
    return paragraph("", "The softAP mode printed \u201c" + escaped(line) + "\u201d. " +
                             std::string(meaning));
}

// Lines that nobody should pass over.
std::string noted_lines(std::string_view title, const NotedLines& lines) {
    if (lines.count == 0) {
        return "";
    }
    std::string text = "<h4>" + std::string(title) + "</h4>\n<pre>";
    for (const std::string& line : lines.first) {
        text += escaped(line) + "\n";
    }
    if (lines.count > lines.first.size()) {
        text += "and " + std::to_string(lines.count - lines.first.size()) + " more\n";
    }
    return text + "</pre>\n";
}

// Why the run has not passed, and what its passes do not prove.
std::string reasons(const Run& run, const Judgement& judgement, const std::string& prefix) {
    const std::vector<std::string> weak = weak_passes(run);
    std::string text;
    // A failed run says its first reason in its heading.
    const bool said = judgement.verdict == RunVerdict::failed && judgement.missing.size() == 1 &&
                      run.evidence.losses.count == 0;
    if (!judgement.missing.empty() && !said) {
        text += card(
            prefix + "why",
            judgement.verdict == RunVerdict::failed ? "Why it failed"
                                                    : "What is missing for a pass",
            softap_words(run) + list_of("reasons", judgement.missing) +
                noted_lines("Lines about lost results", run.evidence.losses) +
                noted_lines("Lines of the tool that are not known here", run.evidence.unknown));
    }
    if (!weak.empty()) {
        text += card(prefix + "weak", "What the passes do not prove", list_of("reasons", weak));
    }
    return text;
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
        text += paragraph("soft", "A cell stands for " + plural_iterations(run.timeline.width()) +
                                      "; its lower part is the share that failed.");
    }
    return card(prefix + "timeline", "Iterations", text);
}

std::string count_cell(std::uint32_t failures, bool green) {
    if (failures != 0) {
        return "bad\">" + std::to_string(failures);
    }
    return green ? "ok\">passed" : "soft\">none seen";
}

std::string test_cases(const Run& run, bool green, const std::string& prefix) {
    std::string text = "<table><thead><tr><th>Test case</th><th>Examines</th>"
                       "<th class=\"number\">Recorded failures</th></tr></thead><tbody>\n";
    for (const TestCaseCount& row : test_cases_of(run)) {
        text += "<tr><th scope=\"row\">" + std::to_string(row.number) + "</th><td>" +
                std::string(row.title) + "</td><td class=\"number " +
                count_cell(row.failures, green) + "</td></tr>\n";
    }
    text += "</tbody></table>\n";
    if (run.failures_without_test_case() != 0) {
        text += paragraph("amber",
                          plural_iterations(run.failures_without_test_case()) +
                              " could not reach the supplicant, and the console does not tell in "
                              "which mode. Give the mode with --mode to have them counted.");
    }
    text += paragraph("soft", run.result_written
                                  ? "These are the counts of the result file " +
                                        escaped(run.result_file) + "."
                                  : "No result file was written on this console; it would hold "
                                    "these counts.");
    return card(prefix + "testcases", "Test cases", text);
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
    const Judgement judgement = judge(run);
    std::string text =
        R"(<div class="run" id=")" + prefix + "run\">\n" +
        heading(style_of(judgement.verdict, !weak_passes(run).empty()), verdict_sentence(run)) +
        paragraph("soft", std::string(title_of(run.mode)) + ", " + std::string(end_words(run)) +
                              (run.began.empty() ? "" : ", began ") + escaped(run.began)) +
        reasons(run, judgement, prefix);
    if (run.started != 0) {
        text += tiles(run) + timeline(run, prefix) + failures_card(run, prefix) +
                test_cases(run, judgement.is_green(), prefix) + throughput_card(run, prefix) +
                phases_card(run, prefix) + access_points(run, prefix);
    }
    return text + facts(run, prefix) + "</div>\n";
}

std::string left_out(const Log& log) {
    if (log.dropped_runs == 0) {
        return "";
    }
    std::string text = count_text(log.dropped_runs, "earlier run", "earlier runs") +
                       " on this console are left out";
    const char* between = ": ";
    for (std::size_t i = 0; i < run_verdict_count; ++i) {
        if (log.dropped_verdicts[i] != 0) {
            text += between + std::to_string(log.dropped_verdicts[i]) + " " +
                    std::string(name_of(static_cast<RunVerdict>(i)));
            between = ", ";
        }
    }
    const bool all_passed =
        log.dropped_verdicts[static_cast<std::size_t>(RunVerdict::passed)] == log.dropped_runs;
    return paragraph(all_passed ? "soft" : "bad", text + ".");
}

std::string run_list(const Log& log) {
    if (log.runs.size() < 2) {
        return "";
    }
    std::string text =
        heading(style_of(judge(log)), verdict_sentence(log)) + "<nav aria-label=\"Runs\"><ol>\n";
    std::size_t number = 1;
    for (const Run& run : log.runs) {
        text += "<li><a href=\"#run" + std::to_string(number) + "-run\">" +
                escaped(verdict_sentence(run)) + "</a> <span class=\"soft\">" +
                std::string(title_of(run.mode)) + "</span></li>\n";
        ++number;
    }
    return text + "</ol></nav>\n" + left_out(log);
}

} // namespace

std::string write_html(const Log& log) {
    std::string text = "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\"/>\n"
                       "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\"/>\n"
                       "<title>wivex: ";
    text += escaped(verdict_sentence(log));
    text += "</title>\n<link rel=\"icon\" href=\"data:,\"/>\n<style>";
    text += page_style;
    text += "</style>\n</head>\n<body>\n<main>\n<h1>wivex test report</h1>\n";
    text += run_list(log);
    if (log.runs.empty()) {
        text += heading("open", verdict_sentence(log));
    }
    std::size_t number = 1;
    for (const Run& run : log.runs) {
        text += run_section(run, number, log.runs.size() == 1);
        ++number;
    }
    text += paragraph("soft", "Console: " + count_text(log.lines, "line", "lines") + ", " +
                                  count_text(log.bytes, "byte", "bytes") + ", " +
                                  count_text(log.unknown_lines, "line", "lines") +
                                  " of other programs or unknown.");
    text += "</main>\n<script>";
    text += page_script;
    text += "</script>\n</body>\n</html>\n";
    return text;
}

} // namespace wivex::report

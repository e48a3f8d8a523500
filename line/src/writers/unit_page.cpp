// SPDX-License-Identifier: Apache-2.0
#include "writers/unit_page.hpp"

#include "common/words.hpp"
#include "writers/html_text.hpp"
#include "writers/site_page.hpp"
#include "writers/unit_words.hpp"

namespace wivex::line {

using report::card;
using report::element;
using report::escaped;
using report::paragraph;

namespace {

constexpr std::string_view search_script = R"js(
(function () {
  var field = document.getElementById("filter");
  var rows = document.querySelectorAll("tbody tr");
  field.parentElement.hidden = false;
  field.addEventListener("input", function () {
    var wanted = field.value.trim().toLowerCase();
    rows.forEach(function (row) {
      row.hidden = row.textContent.toLowerCase().indexOf(wanted) < 0;
    });
  });
}());
)js";

std::string verdict_markup(bool passed, const std::string& words) {
    return report::span(passed ? "ok" : "bad", escaped(words));
}

std::string figure(const Figure& value) {
    return value ? report::figure_text(*value) : "";
}

std::string run_row(const UnitRun& run, const Text& report) {
    const std::string began = escaped(run.began_at.value_or("without a date"));
    return row(row_head(report ? link(*report, began) : began) +
               text_cell(verdict_markup(run.key.passed, verdict_words(run))) +
               text_cell(escaped(run.mode)) + text_cell(escaped(run.key.station)) +
               text_cell(escaped(run.key.firmware)) +
               text_cell(escaped(run.limits_verdict.value_or("none"))) +
               number_cell(std::to_string(run.iterations_passed) + " of " +
                           std::to_string(run.iterations)) +
               number_cell(figure(run.throughput_mean)) + number_cell(figure(run.signal_mean)) +
               number_cell(figure(run.duration)));
}

std::string attempt_card(const UnitHistory& unit, const Attempt& attempt, std::size_t place,
                         const std::function<Text(const UnitRun&)>& report_link) {
    std::string rows;
    for (const std::size_t index : attempt.runs) {
        const UnitRun& run = unit.runs.at(index);
        rows += run_row(run, report_link(run));
    }
    const std::string title = attempt_title(attempt, place) + ": " +
                              verdict_markup(attempt.passed, attempt.passed ? "passed" : "no pass");
    return card("attempt-" + std::to_string(place), title,
                wide_table("Runs",
                           heads({"Began", "Verdict", "Mode", "Station", "Firmware", "Limits"},
                                 {"Iterations passed", "Mbit/s", "dBm", "Seconds"}),
                           rows));
}

} // namespace

std::string last_verdict(const std::vector<Attempt>& attempts) {
    return attempts.empty() ? "no run"
                            : attempt_words(attempts.back().passed, attempts.back().cause);
}

std::string unit_page(const UnitHistory& unit,
                      const std::function<Text(const UnitRun&)>& report_link) {
    const std::vector<Attempt> attempts = unit.attempts();
    const bool passed = !attempts.empty() && attempts.back().passed;
    std::string text = report::verdict_heading(passed ? "passed" : "failed", "Unit " + unit.serial);
    const std::string macs = mac_words(unit);
    text += paragraph("soft", "Last attempt: " + escaped(last_verdict(attempts)) +
                                  (macs.empty() ? "" : ". MAC " + escaped(macs)) + ".");
    for (const std::string& doubt : doubts_about(unit, attempts)) {
        text += paragraph("bad", escaped(doubt));
    }
    std::size_t place = 0;
    for (const Attempt& attempt : attempts) {
        ++place;
        text += attempt_card(unit, attempt, place, report_link);
    }
    return site_page("Unit " + unit.serial, "../", text);
}

std::string list_page(const List& list, const std::function<std::string(std::int64_t)>& unit_link) {
    std::string rows;
    for (const ListEntry& entry : list.entries) {
        const std::string words = attempt_words(entry.passed, entry.cause);
        rows +=
            row(row_head(unit_link(entry.unit_no)) + text_cell(moment_text(entry.began)) +
                text_cell(verdict_markup(entry.passed, words)) + text_cell(escaped(entry.station)));
    }
    std::string text = paragraph("soft", counted(list.count, "entry", "entries"));
    if (static_cast<std::size_t>(list.count) > list.entries.size()) {
        text += paragraph("amber", "The newest " + std::to_string(list.entries.size()) +
                                       " of them are shown; the database has them all.");
    }
    text += wide_table(list.title, heads({"Unit", "Began", "Attempt", "Station"}, {}), rows);
    return site_page(list.title, "../",
                     report::element("h2", escaped(list.title)) + "\n" +
                         card("list", "Attempts", text));
}

std::string search_page(const std::vector<SearchRow>& rows, std::int64_t all) {
    std::string text;
    for (const SearchRow& one : rows) {
        text += row(
            row_head(link("units/" + std::to_string(one.unit_no) + ".html", escaped(one.serial))) +
            text_cell(escaped(one.macs)) + text_cell(escaped(one.verdict)) +
            text_cell(escaped(one.began)));
    }
    const std::string field =
        element("p", {{"hidden", ""}},
                element("label", {{"for", "filter"}}, "Serial or MAC ") +
                    R"(<input type="search" id="filter" autocomplete="off"/>)") +
        "\n";
    std::string body = field;
    if (all > static_cast<std::int64_t>(rows.size())) {
        body += paragraph("amber", "The newest " + std::to_string(rows.size()) + " of " +
                                       std::to_string(all) + " units have a page; " +
                                       report::with_code("`wivex-line unit SERIAL` tells of all."));
    }
    body += wide_table("Units", heads({"Unit", "MAC", "Last attempt", "Began"}, {}), text);
    return site_page("Search", "", element("h2", "Search") + "\n" + card("units", "Units", body),
                     search_script);
}

} // namespace wivex::line

// SPDX-License-Identifier: Apache-2.0
#include "writers/page_overview.hpp"

#include "common/words.hpp"
#include "model/test_cases.hpp"
#include "writers/charts.hpp"
#include "writers/html_text.hpp"
#include "writers/page.hpp"

namespace wivex::report {

namespace {

std::string tile(std::string_view name, const std::string& value, bool bad = false) {
    const std::string shown =
        element("dd", bad ? Attributes{{"class", "bad"}} : Attributes(), value);
    return element("div", element("dt", name) + shown) + "\n";
}

std::string legend_item(std::string_view kind, std::string_view mark, std::string_view words) {
    const std::string cell =
        element("span", {{"class", "cell " + std::string(kind)}, {"aria-hidden", "true"}}, mark);
    return element("li", cell + std::string(words));
}

std::string legend(const Run& run) {
    std::string items = legend_item("passed", "", "passed");
    if (run.warned != 0) {
        items += legend_item("warned", "!", "passed with a warning");
    }
    if (run.count(Outcome::failed) != 0) {
        items += legend_item("failed", "\u00d7", "failed");
    }
    if (run.count(Outcome::uncounted) != 0) {
        items += legend_item("uncounted", "\u2212", "failed, not counted by the tool");
    }
    if (run.count(Outcome::unfinished) != 0) {
        items += legend_item("unfinished", "?", "unfinished");
    }
    return element("ul", {{"class", "legend"}}, items) + "\n";
}

std::string count_cell(std::uint32_t failures, bool green) {
    if (failures != 0) {
        return element("td", {{"class", "number bad"}}, std::to_string(failures));
    }
    return green ? element("td", {{"class", "number ok"}}, "passed")
                 : element("td", {{"class", "number soft"}}, "none seen");
}

std::string test_case_row(const TestCaseCount& row, bool green) {
    return element("tr", element("th", {{"scope", "row"}}, std::to_string(row.number)) +
                             element("td", row.title) + count_cell(row.failures, green)) +
           "\n";
}

} // namespace

std::string tiles(const Run& run) {
    std::string text = "\n" + tile("Iterations", std::to_string(run.started));
    text += tile("Passed", std::to_string(run.count(Outcome::passed)));
    text += tile("Failed", std::to_string(run.failed()), run.failed() != 0);
    if (run.count(Outcome::unfinished) != 0) {
        text += tile("Unfinished", std::to_string(run.count(Outcome::unfinished)));
    }
    if (run.throughput.count != 0) {
        text += tile("Throughput, mean",
                     figure_text(run.throughput.mean()) + " " + element("small", "Mbit/s"));
    }
    if (run.iteration_seconds.count != 0) {
        text += tile("Iteration, mean", duration_text(run.iteration_seconds.mean()));
    }
    if (run.clients_served != 0) {
        text += tile("Clients served", std::to_string(run.clients_served));
    }
    return element("dl", {{"class", "tiles"}}, text) + "\n";
}

std::string timeline_card(const Run& run, const std::string& prefix) {
    std::string text = iteration_strip(run, prefix) + legend(run);
    if (run.timeline.width() > 1) {
        text += paragraph("soft", "A cell stands for " + iterations_text(run.timeline.width()) +
                                      "; its lower part is the share that failed.");
    }
    return card(prefix + "timeline", "Iterations", text);
}

std::string test_cases_card(const Run& run, bool green, const std::string& prefix) {
    std::string rows;
    for (const TestCaseCount& row : test_cases_of(run)) {
        rows += test_case_row(row, green);
    }
    std::string text = table(
        {}, column_head("Test case") + column_head("Examines") + number_head("Recorded failures"),
        rows);
    if (run.failures_without_test_case() != 0) {
        text += paragraph("amber",
                          iterations_text(run.failures_without_test_case()) +
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

} // namespace wivex::report

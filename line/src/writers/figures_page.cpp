// SPDX-License-Identifier: Apache-2.0
#include "common/words.hpp"
#include "model/deviations.hpp"
#include "model/tables.hpp"
#include "writers/html_text.hpp"
#include "writers/line_page.hpp"
#include "writers/site_page.hpp"

namespace wivex::line {

using report::card;
using report::escaped;
using report::figure_text;
using report::paragraph;

namespace {

using Grouped = std::map<std::string, MeasureSums>;

Grouped grouped(const std::vector<MeasureGroup>& groups, std::string MeasureGroup::*by) {
    Grouped result;
    for (const MeasureGroup& group : groups) {
        const std::string& name = group.*by;
        MeasureSums& sums = result[name.empty() ? "(not known)" : name];
        sums.resize(group.sums.size());
        for (std::size_t i = 0; i < group.sums.size(); ++i) {
            sums[i].add(group.sums[i]);
        }
    }
    return result;
}

std::vector<bool> directions() {
    std::vector<bool> more_is_better;
    more_is_better.reserve(measures.size());
    for (const Measure& measure : measures) {
        more_is_better.push_back(measure.more_is_better);
    }
    return more_is_better;
}

std::string measures_card(const LineFacts& facts, const char* id, const std::string& what,
                          std::string MeasureGroup::*by) {
    const std::vector<Deviation> rows = deviations(grouped(facts.measures, by), directions());
    std::string text;
    for (const Deviation& one : rows) {
        const Measure& measure = measures.at(one.measure);
        const std::string mean = figure_text(one.values.mean());
        const char* const word = measure.more_is_better ? " low" : " slow";
        text += row(row_head(std::string(measure.words) + ", " + std::string(measure.unit)) +
                    text_cell(escaped(one.group)) + number_cell(std::to_string(one.values.count)) +
                    number_cell(one.marked ? report::span("bad", mean + word) : mean) +
                    number_cell(figure_text(one.values.deviation())) +
                    number_cell(figure_text(one.values.least)) +
                    number_cell(figure_text(one.values.most)));
    }
    const std::string title = "Figures by " + what + " (30 days)";
    if (text.empty()) {
        return card(id, title, paragraph("soft", "No figures yet."));
    }
    return card(
        id, title,
        wide_table(title,
                   heads({"Figure", what == "station" ? "Station" : "Firmware"},
                         {"Runs", "Mean", "Deviation", "Least", "Most"}),
                   text) +
            paragraph("soft", "One value a run: its mean. \"low\" and \"slow\": worse than all "
                              "others together, by Welch's test with Holm's correction for " +
                                  std::to_string(rows.size()) +
                                  " comparisons; the risk of any mark by chance alone is below 1 "
                                  "in 1000. Fewer than ten values are never marked."));
}

std::string cpk_text(const LimitGroup& group) {
    const std::optional<double> value = cpk(group.values, group.limit, group.comparison == ">=");
    if (!value) {
        return report::span("soft", "not known");
    }
    const std::string text = figure_text(*value);
    return *value < 1 ? report::span("bad", text) : text;
}

std::string limit_row(const LimitGroup& group) {
    const std::string limit = escaped(group.name + " " + group.comparison + " ") +
                              figure_text(group.limit) + " " + escaped(group.unit);
    const auto bad = [](std::int64_t count) {
        const std::string text = std::to_string(count);
        return number_cell(count == 0 ? text : report::span("bad", text));
    };
    return row(row_head(limit) + text_cell(escaped(group.station)) +
               text_cell(escaped(group.firmware)) +
               number_cell(std::to_string(group.values.count)) +
               number_cell(group.values.count == 0 ? "" : figure_text(group.values.mean())) +
               bad(group.outside) + bad(group.unknown) + number_cell(cpk_text(group)));
}

std::string limits_card(const LineFacts& facts) {
    std::string rows;
    for (const LimitGroup& group : facts.limits) {
        rows += limit_row(group);
    }
    if (rows.empty()) {
        return card("limits", "Limits (30 days)", paragraph("soft", "No run had limits."));
    }
    return card("limits", "Limits (30 days)",
                wide_table("Limits",
                           heads({"Limit", "Station", "Firmware"},
                                 {"Values", "Mean", "Outside", "Without value", "Cpk"}),
                           rows) +
                    paragraph("soft", "Cpk: the distance of the mean from the limit in three "
                                      "standard deviations; with few values it says little."));
}

} // namespace

std::string figures_cards(const LineFacts& facts) {
    return measures_card(facts, "by-station", "station", &MeasureGroup::station) +
           measures_card(facts, "by-firmware", "firmware", &MeasureGroup::firmware) +
           limits_card(facts);
}

} // namespace wivex::line

// SPDX-License-Identifier: Apache-2.0
#include "writers/line_page.hpp"

#include "common/words.hpp"
#include "writers/html_text.hpp"
#include "writers/line_charts.hpp"
#include "writers/site_page.hpp"

#include <algorithm>

namespace wivex::line {

using report::card;
using report::escaped;
using report::paragraph;

namespace {

constexpr std::size_t most_columns = 12;

std::string count(std::int64_t number) {
    return std::to_string(number);
}

// A number leads to the list that it counts.
std::string linked(const Lists& lists, const std::string& name, std::int64_t number) {
    return lists.has(name) ? link("lists/" + name + ".html", count(number)) : count(number);
}

std::string period_row(const Period& period, const Lists& lists) {
    const auto number = [&](const char* kind, std::int64_t value) {
        return number_cell(linked(lists, period.label + "-" + kind, value));
    };
    return row(row_head(period.name) + number("units", period.units) +
               number_cell(count(period.runs)) + number_cell(share_text(period.first)) +
               number("first", period.first.all - period.first.good) +
               number_cell(share_text(period.last)) +
               number("last", period.last.all - period.last.good) +
               number("retests", period.retests));
}

std::string periods_card(const Factory& factory) {
    std::string rows;
    for (const Period& period : factory.periods()) {
        rows += period_row(period, factory.lists());
    }
    return card(
        "yield", "Yield",
        wide_table("Yield",
                   heads({"Period"}, {"Units", "Runs", "First-pass yield", "No pass at first",
                                      "Final yield", "No pass so far", "Retests"}),
                   rows) +
            paragraph("soft",
                      "First-pass yield: of the units whose first attempt began in the "
                      "period, those whose first attempt passed. Final yield: of the same "
                      "units, those whose last attempt has passed. In brackets: the "
                      "interval of Wilson, 95 %. An attempt that failed, was interrupted or "
                      "killed, broke off, was not saved, cannot be judged or lies outside "
                      "its limits is no pass."));
}

std::string days_card(const Factory& factory) {
    const Share all = all_days(factory);
    std::string rows;
    for (auto day = factory.days().rbegin(); day != factory.days().rend(); ++day) {
        const Share& share = day->second.first;
        if (share.all == 0) {
            continue;
        }
        const Interval limits = chart_limits(all.rate(), share.all);
        const std::string mark =
            is_outside(share, all.rate()) ? " " + report::span("bad", "outside") : "";
        rows += row(row_head(day_text(day->first)) + number_cell(count(share.all)) +
                    number_cell(linked(factory.lists(), "day-" + day_text(day->first),
                                       share.all - share.good)) +
                    number_cell(percent(share.rate()) + " %" + mark) +
                    number_cell(percent(limits.low) + " to " + percent(limits.high) + " %"));
    }
    if (rows.empty()) {
        return card("days", "First-pass yield by day", paragraph("soft", "No unit in 30 days."));
    }
    return card("days", "First-pass yield by day",
                yield_chart(factory) +
                    wide_table("First-pass yield by day",
                               heads({"Day"}, {"Units", "Not passed", "Yield", "Limits"}), rows) +
                    paragraph("soft", "The limits are those of a p-chart around " +
                                          percent(all.rate()) +
                                          " %: chance alone leaves them on 27 of 10,000 days."));
}

std::string pareto_card(const Factory& factory) {
    std::int64_t all = 0;
    for (const auto& [cause, number] : factory.pareto()) {
        all += number;
    }
    std::string rows;
    std::int64_t sum = 0;
    for (const auto& [cause, number] : factory.pareto()) {
        sum += number;
        const auto share = [&](std::int64_t part) {
            return number_cell(percent(static_cast<double>(part) / static_cast<double>(all)) +
                               " %");
        };
        rows += row(row_head(escaped(cause)) +
                    number_cell(linked(factory.lists(), "cause-" + cause, number)) + share(number) +
                    share(sum));
    }
    const std::string text =
        all == 0
            ? paragraph("soft", "No first attempt failed in 30 days.")
            : pareto_chart(factory) +
                  wide_table("Causes", heads({"Cause"}, {"First attempts", "Share", "Sum"}), rows);
    return card("causes", "What ends first attempts (30 days)", text);
}

std::string station_row(const Factory& factory, const std::string& name,
                        const StationCounts& station, std::size_t columns) {
    std::string cells = row_head(escaped(name)) + number_cell(count(station.firsts));
    for (std::size_t i = 0; i < columns; ++i) {
        const std::string& cause = factory.pareto()[i].first;
        const auto found = station.causes.find(cause);
        const std::int64_t number = found == station.causes.end() ? 0 : found->second;
        const auto is_this = [&](const StationCause& one) {
            return one.station == name && one.cause == cause;
        };
        const auto compared = std::ranges::find_if(factory.comparisons(), is_this);
        const bool marked = compared != factory.comparisons().end() && compared->marked;
        const std::string shown =
            linked(factory.lists(), factory.label_of(name) + "-" + cause, number);
        cells += number_cell(marked ? report::span("bad", shown + " high") : shown);
    }
    return row(cells);
}

std::string stations_card(const Factory& factory) {
    const std::size_t columns = std::min(factory.pareto().size(), most_columns);
    std::string head = heads({"Station"}, {"First attempts"});
    for (std::size_t i = 0; i < columns; ++i) {
        head += heads({}, {factory.pareto()[i].first});
    }
    std::string rows;
    for (const auto& [name, station] : factory.stations()) {
        rows += station_row(factory, name, station, columns);
    }
    if (rows.empty()) {
        return card("stations", "Stations by cause (30 days)",
                    paragraph("soft", "No station yet."));
    }
    return card(
        "stations", "Stations by cause (30 days)",
        wide_table("Stations by cause", head, rows) +
            paragraph("soft", "\"high\": more often than at all other stations together. Each of "
                              "the " +
                                  count(static_cast<std::int64_t>(factory.comparisons().size())) +
                                  " comparisons is Fisher's exact test; Holm's correction for "
                                  "their number keeps the risk of any mark by chance alone below "
                                  "1 in 1000."));
}

std::string doubts_card(const LineFacts& facts) {
    std::string items;
    const auto say = [&](const std::string& markup) {
        items += report::element("li", markup) + "\n";
    };
    const Doubts& doubts = facts.doubts;
    const Factory& factory = facts.factory;
    if (doubts.quarantined != 0) {
        say(counted(doubts.quarantined, "file", "files") + " in quarantine; " +
            report::with_code("`wivex-line quarantine` lists them"));
    }
    if (doubts.conflicts != 0) {
        say(counted(doubts.conflicts, "run", "runs") + " came again with another content; " +
            report::with_code("`wivex-line export conflicts` lists them"));
    }
    if (factory.runs_without_date() != 0) {
        say(counted(factory.runs_without_date(), "run", "runs") + " without a date: in no period");
    }
    if (factory.runs_in_the_future() != 0) {
        say(counted(factory.runs_in_the_future(), "run", "runs") +
            " with a date in the future: in no period");
    }
    for (const auto& [words, unit] : doubts.macs) {
        say(escaped(words));
    }
    return items.empty() ? ""
                         : card("doubts", "Needs a look",
                                report::element("ul", {{"class", "reasons amber"}}, "\n" + items));
}

} // namespace

std::string line_page(const LineFacts& facts) {
    const Factory& factory = facts.factory;
    const std::string text = paragraph("soft", counted(factory.units(), "unit", "units") + ", " +
                                                   counted(factory.runs(), "run", "runs") +
                                                   ", as of " + stamp_text(factory.now())) +
                             doubts_card(facts) + periods_card(factory) + days_card(factory) +
                             pareto_card(factory) + stations_card(factory) + figures_cards(facts);
    return site_page("wivex production line", "", text);
}

} // namespace wivex::line

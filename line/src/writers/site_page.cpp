// SPDX-License-Identifier: Apache-2.0
#include "writers/site_page.hpp"

#include "common/words.hpp"
#include "writers/html_text.hpp"
#include "writers/page_style.hpp"

#include <array>
#include <cstdio>

namespace wivex::line {

using report::element;
using report::escaped;

namespace {

constexpr std::string_view site_style = R"css(
.wide-table { overflow-x: auto; }
.wide-table:focus-visible, a:focus-visible, input:focus-visible {
  outline: 3px solid var(--line); outline-offset: 2px; }
.wide-table table { width: auto; min-width: 100%; }
.wide-table th, .wide-table td { padding-right: 1rem; overflow-wrap: normal; }
.wide-table td a, .wide-table th[scope=row] { white-space: nowrap; }
.limit { stroke: var(--warn); stroke-width: 1.5; stroke-dasharray: 5 4; fill: none;
  vector-effect: non-scaling-stroke; }
.outside { stroke: var(--fail); stroke-width: 10; stroke-linecap: round; fill: none;
  vector-effect: non-scaling-stroke; }
.bar { fill: var(--line); opacity: .55; }
input[type=search] { font: inherit; width: 100%; max-width: 28rem; padding: .45rem .6rem;
  color: var(--text); background: var(--page); border: 1px solid var(--none);
  border-radius: .35rem; }
)css";

} // namespace

std::string site_page(std::string_view title, std::string_view up, const std::string& body,
                      std::string_view script) {
    const std::string head =
        "\n<meta charset=\"utf-8\"/>\n"
        "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\"/>\n" +
        element("title", escaped(title)) + "\n<link rel=\"icon\" href=\"data:,\"/>\n" +
        element("style", std::string(report::page_style) + std::string(site_style)) + "\n";
    const std::string home(up);
    const std::string way = element("nav", {{"aria-label", "Site"}},
                                    link(home + "index.html", "Production line") + " &#183; " +
                                        link(home + "search.html", "Search")) +
                            "\n";
    std::string page =
        "\n" + element("main", "\n" + element("h1", "wivex production line") + "\n" + way + body) +
        "\n";
    if (!script.empty()) {
        page += element("script", script) + "\n";
    }
    return "<!DOCTYPE html>\n" +
           element("html", {{"lang", "en"}},
                   "\n" + element("head", head) + "\n" + element("body", page) + "\n") +
           "\n";
}

std::string counted(std::int64_t count, std::string_view singular, std::string_view plural) {
    return report::count_text(static_cast<std::uint64_t>(count), singular, plural);
}

std::string link(const std::string& target, const std::string& markup) {
    return element("a", {{"href", target}}, markup);
}

std::string percent(double rate) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "%.1f", rate * 100);
    return text.data();
}

std::string share_text(const Share& share) {
    if (share.all == 0) {
        return "no unit";
    }
    const Interval interval = wilson(share);
    return percent(share.rate()) + " % " +
           report::span("soft",
                        "(" + percent(interval.low) + " to " + percent(interval.high) + ")");
}

std::string number_cell(const std::string& markup) {
    return element("td", {{"class", "number"}}, markup);
}

std::string text_cell(const std::string& markup) {
    return element("td", markup);
}

std::string row_head(const std::string& markup) {
    return element("th", {{"scope", "row"}}, markup);
}

std::string row(const std::string& cells) {
    return element("tr", cells) + "\n";
}

std::string heads(std::initializer_list<std::string_view> texts,
                  std::initializer_list<std::string_view> numbers) {
    std::string text;
    for (const std::string_view title : texts) {
        text += report::column_head(escaped(title));
    }
    for (const std::string_view title : numbers) {
        text += report::number_head(escaped(title));
    }
    return text;
}

std::string wide_table(const std::string& label, const std::string& head, const std::string& rows) {
    return element("div",
                   {{"class", "wide-table"},
                    {"tabindex", "0"},
                    {"role", "region"},
                    {"aria-label", label}},
                   "\n" + report::table({}, head, rows)) +
           "\n";
}

} // namespace wivex::line

// SPDX-License-Identifier: Apache-2.0
#include "writers/page.hpp"

#include "writers/html_text.hpp"
#include "writers/page_style.hpp"

namespace wivex::report {

std::string html_document(const std::string& title, const std::string& markup) {
    const std::string head =
        "\n<meta charset=\"utf-8\"/>\n"
        "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\"/>\n" +
        element("title", escaped(title)) + "\n<link rel=\"icon\" href=\"data:,\"/>\n" +
        element("style", page_style) + "\n";
    const std::string body =
        "\n" + element("main", markup) + "\n" + element("script", page_script) + "\n";
    return "<!DOCTYPE html>\n" +
           element("html", {{"lang", "en"}},
                   "\n" + element("head", head) + "\n" + element("body", body) + "\n") +
           "\n";
}

std::string verdict_heading(std::string_view kind, std::string_view sentence) {
    return element("h2", {{"class", "verdict " + std::string(kind)}}, escaped(sentence)) + "\n";
}

std::string card(std::string_view id, std::string_view title, const std::string& markup) {
    return element("section", {{"class", "card"}, {"id", id}},
                   "\n" + element("h3", title) + "\n" + markup) +
           "\n";
}

std::string paragraph(std::string_view kind, const std::string& markup) {
    return element("p", {{"class", kind}}, markup) + "\n";
}

std::string span(std::string_view kind, const std::string& markup) {
    return element("span", {{"class", kind}}, markup);
}

std::string column_head(std::string_view title) {
    return element("th", {{"scope", "col"}}, title);
}

std::string number_head(std::string_view title) {
    return element("th", {{"class", "number"}, {"scope", "col"}}, title);
}

std::string table(const Attributes& attributes, const std::string& heads, const std::string& rows) {
    return element("table", attributes,
                   element("thead", element("tr", heads)) + element("tbody", "\n" + rows)) +
           "\n";
}

} // namespace wivex::report

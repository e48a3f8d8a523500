// SPDX-License-Identifier: Apache-2.0
// What all pages of the site are made of.
#pragma once

#include "model/statistics.hpp"
#include "writers/page.hpp"

#include <string>
#include <string_view>

namespace wivex::line {

/// A whole page. `up` leads from it to the folder of the site: "" or "../". `script` may be empty.
std::string site_page(std::string_view title, std::string_view up, const std::string& body,
                      std::string_view script = {});

/// "1 unit", "3 units".
std::string counted(std::int64_t count, std::string_view singular, std::string_view plural);

std::string link(const std::string& target, const std::string& markup);

/// "98.3 %".
std::string percent(double rate);

/// "98.3 % (97.1 to 99.0)" with its interval of Wilson; "no unit" without values.
std::string share_text(const Share& share);

std::string number_cell(const std::string& markup);
std::string text_cell(const std::string& markup);
std::string row_head(const std::string& markup);
std::string row(const std::string& cells);

/// Headings of columns, those of `numbers` to the right.
std::string heads(std::initializer_list<std::string_view> texts,
                  std::initializer_list<std::string_view> numbers);

/// A table in a frame that scrolls by itself on a narrow screen.
std::string wide_table(const std::string& label, const std::string& head, const std::string& rows);

} // namespace wivex::line

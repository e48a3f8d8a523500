// SPDX-License-Identifier: Apache-2.0
// What all parts of the page are made of.
#pragma once

#include "writers/element.hpp"

#include <string>
#include <string_view>
#include <vector>

namespace wivex::report {

/// The whole page around `markup`; it needs nothing else. `title` is text.
std::string html_document(const std::string& title, const std::string& markup);

/// The title of a verdict in the style `kind` ("passed", "weak", "failed", "open", "plain").
std::string verdict_heading(std::string_view kind, std::string_view sentence);

/// A part of the page under its own title.
std::string card(std::string_view id, std::string_view title, const std::string& markup);

/// A paragraph in the style `kind` ("soft", "amber", "bad", "advice") that holds `markup`.
std::string paragraph(std::string_view kind, const std::string& markup);

/// A part of a line in the style `kind`.
std::string span(std::string_view kind, const std::string& markup);

/// A heading of a table's column.
std::string column_head(std::string_view title);

/// A heading of a table's column of numbers.
std::string number_head(std::string_view title);

/// A table of one row of headings over `rows`.
std::string table(const Attributes& attributes, const std::string& heads, const std::string& rows);

} // namespace wivex::report

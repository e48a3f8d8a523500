// SPDX-License-Identifier: Apache-2.0
// Rows of a table as CSV or JSON.
#pragma once

#include "store/statement.hpp"

#include <string>
#include <vector>

namespace wivex::line {

/// One line of CSV with its end (RFC 4180). Null is empty; an empty text is "" in quotes.
std::string csv_line(const std::vector<Value>& values);
std::string csv_head(const std::vector<std::string>& names);

/// One object of JSON; null is null.
std::string json_object(const std::vector<std::string>& names, const std::vector<Value>& values);

} // namespace wivex::line

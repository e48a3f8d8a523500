// SPDX-License-Identifier: Apache-2.0
// Finds every text that the tool can print by reading its source: all calls of the print functions,
// with literals that reach them through a table.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace report_test {

struct SourceText {
    /// One line as it could stand on the console: each conversion is expanded, with its literal
    /// where it has one, otherwise with "x" or "7".
    std::string line;
    /// Where it is printed.
    std::string file;
    int source_line = 0;
};

/// The texts of one source.
std::vector<SourceText> texts_in_source(std::string_view source, const std::string& file);

/// The texts of all sources of `folder` and the folders in it.
std::vector<SourceText> texts_in_folder(const std::string& folder);

} // namespace report_test

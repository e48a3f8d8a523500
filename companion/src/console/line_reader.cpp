// SPDX-License-Identifier: Apache-2.0
#include "console/line_reader.hpp"

#include "console/hints.hpp"

#include <algorithm>

namespace wivex::report {

namespace {

// A line in which no text of the tool was found.
Finding read_other(std::string_view line) {
    if (const auto figure = read_traffic(line)) {
        return *figure;
    }
    if (const auto point = read_access_point(line)) {
        return *point;
    }
    if (const std::string_view bssid = read_connection(line); !bssid.empty()) {
        return Connected{bssid};
    }
    if (Recogniser::looks_like_the_tool(line)) {
        return UnknownText{line, line.starts_with(tool_prefix)};
    }
    return OtherLine{read_sub_cause(line)};
}

} // namespace

std::span<const Finding> LineReader::read(std::string_view line) {
    if (const auto name = names_.take(line)) {
        return only(*name);
    }
    if (line.empty()) {
        return {};
    }
    const std::span<const Match> matches = recogniser_.read(line);
    if (matches.empty()) {
        return only(read_other(line));
    }
    std::ranges::transform(matches, found_.begin(), typed);
    return {found_.data(), matches.size()};
}

} // namespace wivex::report

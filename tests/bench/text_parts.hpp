// SPDX-License-Identifier: Apache-2.0
// Parts of a text: its lines, and what stands in it.
#pragma once

#include <algorithm>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace bench_test {

inline std::vector<std::string> lines_of(std::string_view text) {
    std::vector<std::string> lines;
    std::istringstream stream{std::string(text)};
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

inline bool contains(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

template <typename Parts>
bool contains_one_of(std::string_view text, const Parts& parts) {
    return std::any_of(std::begin(parts), std::end(parts),
                       [text](std::string_view part) { return contains(text, part); });
}

inline int times(std::string_view text, std::string_view part) {
    int count = 0;
    for (auto at = text.find(part); at != std::string_view::npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

} // namespace bench_test

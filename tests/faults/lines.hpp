// A text as its lines.
#pragma once

#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace faults {

inline std::vector<std::string> lines_of(std::string_view text) {
    std::vector<std::string> lines;
    std::istringstream stream{std::string(text)};
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

} // namespace faults

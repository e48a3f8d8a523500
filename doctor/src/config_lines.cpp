// SPDX-License-Identifier: Apache-2.0
#include "config_lines.hpp"

#include "common/files.hpp"
#include "run/config_file.hpp"
#include "text.hpp"

#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace wivex::doctor {

namespace {

// A file of other content must not become a report without end.
constexpr int most_lines = 10'000;

bool is_comment_or_empty(const std::string& line) {
    return trimmed(line).empty() || line.starts_with('#') || line.starts_with("//");
}

} // namespace

ConfigLines read_config_lines(const std::string& path) {
    ConfigLines lines;
    FileReader file(open_file(path.c_str(), O_RDONLY));
    if (!file) {
        lines.failure = std::strerror(errno);
        return lines;
    }
    ConfigLine line;
    int number = 1;
    for (; number <= most_lines && read_config_line(file, line); ++number) {
        if (const std::size_t value = find_config_value(line.text)) {
            lines.settings.push_back(
                {number, line.text.substr(0, value - 1), line.text.substr(value), line.cut});
        } else if (!is_comment_or_empty(line.text)) {
            lines.without_equals.push_back(number);
        }
    }
    if (file.error() != 0) {
        lines.failure = std::strerror(file.error());
    } else if (number > most_lines) {
        lines.failure = "more than 10000 lines";
    }
    return lines;
}

const Setting* last_setting(const ConfigLines& lines, const std::string& key) {
    const auto found = std::find_if(lines.settings.rbegin(), lines.settings.rend(),
                                    [&key](const Setting& setting) { return setting.key == key; });
    return found == lines.settings.rend() ? nullptr : &*found;
}

} // namespace wivex::doctor

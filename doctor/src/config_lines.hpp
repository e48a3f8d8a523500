// SPDX-License-Identifier: Apache-2.0
// The lines of a configuration file that set something, as the tool's reader takes them.
#pragma once

#include <string>
#include <vector>

namespace wivex::doctor {

struct Setting {
    int line = 0;
    std::string key;
    std::string value;
    /// The line has more characters than count.
    bool cut = false;
};

struct ConfigLines {
    std::vector<Setting> settings;
    /// Why the file could not be read to its end; empty when it was.
    std::string failure;
    /// Lines that set nothing and are no comments.
    std::vector<int> without_equals;
};

ConfigLines read_config_lines(const std::string& path);

/// The setting that holds in the end; null when the file has none.
const Setting* last_setting(const ConfigLines& lines, const std::string& key);

} // namespace wivex::doctor

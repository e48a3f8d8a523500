// SPDX-License-Identifier: Apache-2.0
#include "language/files.hpp"

#include <fstream>
#include <sstream>

namespace bench {

std::optional<std::string> read_file(const std::string& path) {
    const std::ifstream file(path, std::ios::binary);
    if (!file) {
        return std::nullopt;
    }
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

bool write_file(const std::string& path, std::string_view content) {
    std::ofstream file(path, std::ios::binary);
    file.write(content.data(), static_cast<std::streamsize>(content.size()));
    file.close();
    return static_cast<bool>(file);
}

} // namespace bench

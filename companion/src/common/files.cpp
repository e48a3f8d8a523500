// SPDX-License-Identifier: Apache-2.0
#include "common/files.hpp"

#include "common/bytes.hpp"
#include "common/printable.hpp"
#include "common/unique_file.hpp"

#include <fcntl.h>

#include <array>
#include <cerrno>
#include <cstring>

namespace wivex::report {

bool read_beyond(const std::string& path, std::size_t most, std::string& content) {
    const UniqueFile file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!file.is_open()) {
        return false;
    }
    std::array<char, 65536> buffer{};
    long length = 1;
    while (length > 0 && content.size() <= most) {
        length = read_some(file.get(), buffer);
        content.append(buffer.data(), length > 0 ? static_cast<std::size_t>(length) : 0);
    }
    return length >= 0;
}

std::string read_whole_file(const std::string& path, std::size_t most, std::string& content) {
    const std::string name = printable(path);
    if (!read_beyond(path, most, content)) {
        return "cannot read " + name + ": " + std::strerror(errno);
    }
    return content.size() <= most ? ""
                                  : name + " is larger than " + std::to_string(most) + " bytes";
}

} // namespace wivex::report

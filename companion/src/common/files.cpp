// SPDX-License-Identifier: Apache-2.0
#include "common/files.hpp"

#include "common/bytes.hpp"
#include "common/printable.hpp"
#include "common/unique_file.hpp"

#include <fcntl.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <span>

namespace wivex::report {

std::string read_whole_file(const std::string& path, std::size_t most, std::string& content) {
    const std::string name = printable(path);
    const UniqueFile file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!file.is_open()) {
        return "cannot read " + name + ": " + std::strerror(errno);
    }
    std::array<char, 65536> buffer{};
    for (;;) {
        const long length = read_some(file.get(), buffer);
        if (length < 0) {
            return "cannot read " + name + ": " + std::strerror(errno);
        }
        if (length == 0) {
            return {};
        }
        content.append(buffer.data(), static_cast<std::size_t>(length));
        if (content.size() > most) {
            return name + " is larger than " + std::to_string(most) + " bytes";
        }
    }
}

} // namespace wivex::report

// SPDX-License-Identifier: Apache-2.0
#include "reader/report_files.hpp"

#include "common/bytes.hpp"
#include "common/unique_file.hpp"

#include <fcntl.h>
#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>

namespace wivex::line {

namespace {

namespace fs = std::filesystem;

} // namespace

void find_reports(const std::string& place, const std::function<bool(const std::string&)>& each,
                  const std::function<void(const std::string&)>& unreadable) {
    std::error_code error;
    if (!fs::is_directory(place, error)) {
        each(place);
        return;
    }
    // Links to folders are not followed: they may lead round in a circle.
    fs::directory_iterator entry(place, error);
    if (error) {
        unreadable(place + ": " + error.message());
        return;
    }
    for (const fs::directory_iterator end; entry != end; entry.increment(error)) {
        const std::string path = entry->path().string();
        if (entry->is_directory(error) && !entry->is_symlink(error)) {
            bool goes_on = true;
            find_reports(
                path, [&](const std::string& file) { return goes_on = each(file); }, unreadable);
            if (!goes_on) {
                return;
            }
        } else if (entry->path().filename() == "run.json" && !each(path)) {
            return;
        }
    }
    if (error) {
        unreadable(place + ": " + error.message());
    }
}

FileBytes read_file(const std::string& path) {
    FileBytes file;
    // A pipe of that name must not hold the program up.
    const report::UniqueFile opened(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status {};
    if (!opened.is_open() || fstat(opened.get(), &status) != 0) {
        file.problem = std::string("cannot be read: ") + std::strerror(errno);
        return file;
    }
    file.size = status.st_size;
    if (!S_ISREG(status.st_mode)) {
        file.problem = "is no ordinary file";
        return file;
    }
    std::array<char, 65536> buffer{};
    long got = 1;
    while (got > 0 && file.bytes.size() <= most_bytes) {
        got = report::read_some(opened.get(), buffer);
        file.bytes.append(buffer.data(), got > 0 ? static_cast<std::size_t>(got) : 0);
    }
    if (file.bytes.size() > most_bytes) {
        file.problem = "larger than " + std::to_string(most_bytes >> 20U) + " MB";
    }
    if (got < 0) {
        file.problem = std::string("cannot be read: ") + std::strerror(errno);
    }
    return file;
}

} // namespace wivex::line

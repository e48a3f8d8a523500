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
#include <utility>
#include <vector>

namespace wivex::line {

namespace {

namespace fs = std::filesystem;

// The files of one folder; its own folders join `folders`. False when `each` wants no more.
bool look_into(const std::string& folder, std::vector<std::string>& folders,
               const std::function<bool(const std::string&)>& each,
               const std::function<void(const std::string&)>& unreadable) {
    std::error_code error;
    fs::directory_iterator entry(folder, error);
    if (error) {
        unreadable(folder + ": " + error.message());
        return true;
    }
    for (const fs::directory_iterator end; entry != end; entry.increment(error)) {
        const std::string path = entry->path().string();
        // Links to folders are not followed: they may lead round in a circle.
        if (entry->is_directory(error) && !entry->is_symlink(error)) {
            folders.push_back(path);
        } else if (entry->path().filename() == "run.json" && !each(path)) {
            return false;
        }
    }
    if (error) {
        unreadable(folder + ": " + error.message());
    }
    return true;
}

} // namespace

void find_reports(const std::string& place, const std::function<bool(const std::string&)>& each,
                  const std::function<void(const std::string&)>& unreadable) {
    std::error_code error;
    if (!fs::is_directory(place, error)) {
        each(place);
        return;
    }
    std::vector<std::string> folders{place};
    while (!folders.empty()) {
        const std::string folder = std::move(folders.back());
        folders.pop_back();
        if (!look_into(folder, folders, each, unreadable)) {
            return;
        }
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

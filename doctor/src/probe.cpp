// SPDX-License-Identifier: Apache-2.0
#include "probe.hpp"

#include "common/files.hpp"

#include <fcntl.h>
#include <net/if.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>

namespace wivex::doctor {

namespace {

std::string folder_of(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos) {
        return ".";
    }
    return slash == 0 ? "/" : path.substr(0, slash);
}

bool has_room(const std::string& folder) {
    struct statvfs space {};
    if (statvfs(folder.c_str(), &space) != 0 || space.f_blocks == 0) {
        return true;
    }
    // Root may take the reserve too.
    return (geteuid() == 0 ? space.f_bfree : space.f_bavail) > 0;
}

WriteProbe probe_new_file(const std::string& path) {
    const std::string folder = folder_of(path);
    if (access(folder.c_str(), W_OK | X_OK) != 0) {
        return {WriteTrouble::cannot_be_opened, folder + ": " + std::strerror(errno)};
    }
    if (!has_room(folder)) {
        return {WriteTrouble::no_room, folder + ": " + std::strerror(ENOSPC)};
    }
    return {};
}

WriteProbe probe_old_file(const std::string& path, const struct stat& status) {
    if (S_ISDIR(status.st_mode)) {
        return {WriteTrouble::cannot_be_opened, path + ": " + std::strerror(EISDIR)};
    }
    if (S_ISFIFO(status.st_mode)) {
        return {WriteTrouble::waits, path + ": a named pipe, whose opening waits for a reader"};
    }
    if (access(path.c_str(), W_OK) != 0) {
        return {WriteTrouble::cannot_be_opened, path + ": " + std::strerror(errno)};
    }
    // A file that is emptied gives its own room back.
    if (S_ISREG(status.st_mode) && status.st_blocks == 0 && !has_room(folder_of(path))) {
        return {WriteTrouble::no_room, path + ": " + std::strerror(ENOSPC)};
    }
    return {};
}

bool is_program(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

FoundProgram program_at(const std::string& path) {
    if (!is_program(path)) {
        return {};
    }
    const bool runs = access(path.c_str(), X_OK) == 0;
    return {runs ? FoundProgram::State::runs : FoundProgram::State::not_executable, path};
}

} // namespace

std::string why_unreadable(const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) {
        return std::strerror(errno);
    }
    if (S_ISFIFO(status.st_mode)) {
        return "a named pipe, whose opening waits for a writer";
    }
    const UniqueFd file = open_file(path.c_str(), O_RDONLY | O_NONBLOCK);
    if (!file) {
        return std::strerror(errno);
    }
    char byte = 0;
    return read(file.get(), &byte, 1) < 0 ? std::strerror(errno) : "";
}

WriteProbe probe_for_writing(const std::string& path, bool links_are_followed) {
    struct stat status {};
    if (lstat(path.c_str(), &status) != 0) {
        return errno == ENOENT
                   ? probe_new_file(path)
                   : WriteProbe{WriteTrouble::cannot_be_opened, path + ": " + std::strerror(errno)};
    }
    if (S_ISLNK(status.st_mode)) {
        if (!links_are_followed) {
            return {WriteTrouble::cannot_be_opened,
                    path + ": a symbolic link, which the run does not follow here"};
        }
        std::array<char, PATH_MAX> target{};
        if (realpath(path.c_str(), target.data()) == nullptr) {
            return {WriteTrouble::cannot_be_opened, path + ": " + std::strerror(errno)};
        }
        return stat(target.data(), &status) == 0
                   ? probe_old_file(target.data(), status)
                   : WriteProbe{WriteTrouble::cannot_be_opened, path + ": " + std::strerror(errno)};
    }
    return probe_old_file(path, status);
}

std::vector<std::string> names_in(const std::string& folder) {
    std::vector<std::string> names;
    const Directory directory = open_directory(folder.c_str());
    if (!directory) {
        return names;
    }
    while (const dirent* entry = next_entry(directory)) {
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..") {
            names.emplace_back(name);
        }
    }
    return names;
}

std::string link_name(const std::string& path) {
    std::array<char, PATH_MAX> target{};
    if (readlink(path.c_str(), target.data(), target.size() - 1) <= 0) {
        return {};
    }
    const std::string_view text(target.data());
    return std::string(text.substr(text.rfind('/') + 1));
}

std::string line_of(const std::string& path) {
    FileReader file(open_file(path.c_str(), O_RDONLY | O_NONBLOCK));
    std::array<char, 256> line{};
    if (!file || !file.read_line(line)) {
        return {};
    }
    const std::string_view text(line.data());
    return std::string(text.substr(0, text.find('\n')));
}

bool has_interface(const char* name) {
    return if_nametoindex(name) != 0;
}

FoundProgram find_program(std::string_view name) {
    if (name.find('/') != std::string_view::npos) {
        return program_at(std::string(name));
    }
    const char* const variable = std::getenv("PATH");
    std::string_view path = variable == nullptr ? "/usr/sbin:/usr/bin:/sbin:/bin" : variable;
    FoundProgram best;
    while (true) {
        const std::string_view folder = path.substr(0, path.find(':'));
        FoundProgram found =
            program_at((folder.empty() ? "." : std::string(folder)) + "/" + std::string(name));
        if (found.state == FoundProgram::State::runs) {
            return found;
        }
        if (found.state == FoundProgram::State::not_executable) {
            best = found;
        }
        if (folder.size() == path.size()) {
            return best;
        }
        path.remove_prefix(folder.size() + 1);
    }
}

} // namespace wivex::doctor

// SPDX-License-Identifier: Apache-2.0
#include "writers/report_files.hpp"

#include "common/bytes.hpp"
#include "common/unique_file.hpp"
#include "writers/html_writer.hpp"
#include "writers/json_writer.hpp"
#include "writers/junit_writer.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string_view>

namespace wivex::report {

namespace {

struct Format {
    std::string_view file;
    std::string (*write)(const Log&);
};

constexpr auto formats = std::to_array<Format>({
    {"run.json", write_json},
    {"junit.xml", write_junit},
    {"report.html", write_html},
});

// Written beside its place and renamed: a reader never sees half a file, and a full disk leaves
// the one before.
std::string write_file(const std::string& path, const std::string& content) {
    const std::string beside = path + ".new";
    UniqueFile file(open(beside.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644));
    bool written = file.is_open() && write_all(file.get(), content);
    if (written) {
        written = close(file.release()) == 0;
    }
    if (written && std::rename(beside.c_str(), path.c_str()) == 0) {
        return {};
    }
    const std::string reason = std::strerror(errno);
    unlink(beside.c_str());
    return "cannot write " + path + ": " + reason;
}

} // namespace

std::string write_into(const std::string& directory, std::string_view name,
                       const std::string& content) {
    std::error_code error;
    std::filesystem::create_directories(directory, error);
    if (error) {
        return "cannot make " + directory + ": " + error.message();
    }
    return write_file(directory + "/" + std::string(name), content);
}

std::string write_report(const Log& log, const std::string& directory) {
    for (const Format& format : formats) {
        std::string problem = write_into(directory, format.file, format.write(log));
        if (!problem.empty()) {
            return problem;
        }
    }
    return {};
}

} // namespace wivex::report

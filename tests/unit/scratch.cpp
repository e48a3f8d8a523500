// SPDX-License-Identifier: Apache-2.0
#include "scratch.hpp"

#include "common/process_state.hpp"

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fstream>
#include <iterator>

namespace wivex::test_support {

std::string ScratchDirectory::operator/(std::string_view name) const {
    return path() + "/" + std::string(name);
}

std::string ScratchDirectory::file(std::string_view name, std::string_view content) const {
    std::string path = *this / name;
    std::ofstream(path, std::ios::binary) << content;
    return path;
}

std::string ScratchDirectory::program(std::string_view name, std::string_view content) const {
    std::string path = file(name, content);
    ::chmod(path.c_str(), 0755);
    return path;
}

std::string read_file(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void create_file(const std::string& path) {
    const std::ofstream created(path);
}

bool exists(const std::string& path) {
    struct stat status {};
    return ::lstat(path.c_str(), &status) == 0;
}

std::chrono::microseconds processor_time() {
    struct rusage usage {};
    ::getrusage(RUSAGE_THREAD, &usage);
    const auto in_microseconds = [](const timeval& time) {
        return std::chrono::seconds(time.tv_sec) + std::chrono::microseconds(time.tv_usec);
    };
    return in_microseconds(usage.ru_utime) + in_microseconds(usage.ru_stime);
}

void reset_process_state() {
    run_options = RunOptions{};
    compare_previous = 1;
    sigterm_var = 0;
}

} // namespace wivex::test_support

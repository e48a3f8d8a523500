// SPDX-License-Identifier: Apache-2.0
#include "scratch.hpp"

#include "common/process_state.hpp"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <thread>

namespace wivex::test_support {

ScratchDirectory::ScratchDirectory() {
    std::string name = "/tmp/unit-test-XXXXXX";
    if (::mkdtemp(name.data()) == nullptr) {
        std::abort();
    }
    path_ = name;
}

ScratchDirectory::~ScratchDirectory() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::string ScratchDirectory::operator/(std::string_view name) const {
    return path_ + "/" + std::string(name);
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

bool exists(const std::string& path) {
    struct stat status {};
    return ::lstat(path.c_str(), &status) == 0;
}

std::chrono::microseconds processor_time() {
    struct rusage usage {};
    ::getrusage(RUSAGE_SELF, &usage);
    const auto in_microseconds = [](const timeval& time) {
        return std::chrono::seconds(time.tv_sec) + std::chrono::microseconds(time.tv_usec);
    };
    return in_microseconds(usage.ru_utime) + in_microseconds(usage.ru_stime);
}

Gate::Gate() {
    int ends[2]{-1, -1};
    if (::pipe2(ends, O_CLOEXEC) != 0) {
        std::abort();
    }
    read_end_ = ends[0];
    write_end_ = ends[1];
}

Gate::~Gate() {
    ::close(read_end_);
    ::close(write_end_);
}

void Gate::open() const {
    [[maybe_unused]] const ssize_t written = ::write(write_end_, "x", 1);
}

void Gate::wait() const {
    char token = 0;
    [[maybe_unused]] const ssize_t length = ::read(read_end_, &token, 1);
}

int fork_child(const std::function<int()>& body) {
    const pid_t pid = ::fork();
    if (pid == 0) {
        ::_exit(body());
    }
    return pid;
}

int end_of_child(int pid, std::chrono::milliseconds limit) {
    const Stopwatch watch;
    int status = 0;
    while (::waitpid(pid, &status, WNOHANG) == 0) {
        if (watch.elapsed() > limit) {
            ::kill(pid, SIGKILL);
            ::waitpid(pid, &status, 0);
            return -1;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

void reset_process_state() {
    run_options = RunOptions{};
    compare_previous = 1;
    sigterm_var = 0;
}

} // namespace wivex::test_support

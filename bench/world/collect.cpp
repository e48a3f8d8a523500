// SPDX-License-Identifier: Apache-2.0
#include "world/collect.hpp"

#include "language/conventions.hpp"
#include "language/files.hpp"

#include <sys/wait.h>
#include <time.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <string>

namespace bench {

namespace {

namespace fs = std::filesystem;

double milliseconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) * 1e-3;
}

double now_ms() {
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) * 1e-6;
}

void copy_files(const fs::path& from, const fs::path& to) {
    std::error_code ignored;
    if (!fs::exists(from, ignored)) {
        return;
    }
    fs::create_directories(to, ignored);
    for (const auto& entry : fs::directory_iterator(from, ignored)) {
        if (entry.is_regular_file(ignored)) {
            fs::copy_file(entry.path(), to / entry.path().filename(),
                          fs::copy_options::overwrite_existing, ignored);
        }
    }
}

std::string socket_names() {
    std::string names;
    std::error_code ignored;
    for (const auto& entry : fs::directory_iterator("/tmp", ignored)) {
        const std::string name = entry.path().filename();
        if (name.starts_with("wpa_ctrl_")) {
            names += name + "\n";
        }
    }
    return names;
}

std::string usage_text(const Ended& ended, double wall_ms) {
    std::array<char, 256> text{};
    std::snprintf(text.data(), text.size(),
                  "user_ms %.3f\nsystem_ms %.3f\nmax_rss_kb %ld\nwall_ms %.3f\n%s %d\n",
                  milliseconds(ended.usage.ru_utime), milliseconds(ended.usage.ru_stime),
                  ended.usage.ru_maxrss, wall_ms, WIFEXITED(ended.status) ? "exit" : "signal",
                  WIFEXITED(ended.status) ? WEXITSTATUS(ended.status) : WTERMSIG(ended.status));
    return text.data();
}

} // namespace

Stopwatch::Stopwatch() : start_(now_ms()) {}

double Stopwatch::elapsed_ms() const {
    return now_ms() - start_;
}

void collect(int out_fd, const Ended& ended, const Stopwatch& watch) {
    const double wall_ms = watch.elapsed_ms();
    // The folder is outside of this root; its descriptor still leads there.
    const std::string out = "/proc/self/fd/" + std::to_string(out_fd);
    copy_files("/root", out + "/root");
    copy_files("/tmp", out + "/tmp");
    copy_files(log_folder, out);
    copy_files("/sys/module/bcmdhd/parameters", out + "/parameters");
    write_file(out + "/sockets", socket_names());
    write_file(out + "/usage", usage_text(ended, wall_ms));
}

} // namespace bench

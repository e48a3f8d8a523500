// SPDX-License-Identifier: Apache-2.0
#include "kernel/register_files.hpp"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace bench {

namespace {

namespace fs = std::filesystem;

constexpr const char* phy_root = "/sys/kernel/debug/ieee80211";

void check(int result, const std::string& what) {
    if (result < 0) {
        throw std::system_error(errno, std::generic_category(), what);
    }
}

void make_pipe(const fs::path& path) {
    check(mkfifo(path.c_str(), 0600), path);
}

fs::path register_folder(const ChipScript& script) {
    return fs::path(phy_root) / script.phy / "ath6kl";
}

/// A pipe into which the tool's commands write lines.
class WrittenFile {
public:
    // Open for both directions, so that no writer ever waits and none ends the stream.
    WrittenFile(const char* name, const fs::path& directory)
        : fd_(open((directory / name).c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC)) {}
    ~WrittenFile() {
        close(fd_);
    }
    WrittenFile(const WrittenFile&) = delete;
    WrittenFile& operator=(const WrittenFile&) = delete;

    int fd() const {
        return fd_;
    }

    /// Complete lines written since the last call.
    std::vector<std::string> take_lines() {
        std::array<char, 512> bytes{};
        for (ssize_t count = 0; (count = read(fd_, bytes.data(), bytes.size())) > 0;) {
            text_.append(bytes.data(), static_cast<std::size_t>(count));
        }
        std::vector<std::string> lines;
        for (std::size_t end = 0; (end = text_.find('\n')) != std::string::npos;) {
            lines.push_back(text_.substr(0, end));
            text_.erase(0, end + 1);
        }
        return lines;
    }

private:
    int fd_;
    std::string text_;
};

class RegisterServer {
public:
    RegisterServer(const ChipScript& script, fs::path directory, const std::string& log_path)
        : script_(script), directory_(std::move(directory)), log_(log_path, std::ios::app),
          command_("aow", directory_), address_("reg_addr", directory_) {}

    [[noreturn]] void serve_writes() {
        for (;;) {
            std::array<pollfd, 2> files{{{command_.fd(), POLLIN, 0}, {address_.fd(), POLLIN, 0}}};
            poll(files.data(), files.size(), -1);
            take_writes();
        }
    }

    /// Each reader gets a pipe of its own: the next one takes the name before this one is answered,
    /// so that no reader finds a second answer behind the first.
    [[noreturn]] void serve_reads() {
        const fs::path dump = directory_ / "reg_dump";
        const fs::path next = directory_ / ".next";
        for (;;) {
            const int reader = open(dump.c_str(), O_WRONLY | O_CLOEXEC);
            fs::remove(next);
            make_pipe(next);
            fs::rename(next, dump);
            answer(reader);
            close(reader);
        }
    }

private:
    void take_writes() {
        const std::scoped_lock lock(mutex_);
        for (const std::string& line : command_.take_lines()) {
            log_ << "aow " << line << std::endl;
        }
        for (const std::string& line : address_.take_lines()) {
            log_ << "reg_addr " << line << std::endl;
            selected_ = static_cast<std::uint32_t>(std::strtoul(line.c_str(), nullptr, 0));
        }
    }

    void answer(int reader) {
        take_writes();
        const std::scoped_lock lock(mutex_);
        log_ << "reg_dump" << std::endl;
        const auto found = script_.registers.find(selected_);
        if (found == script_.registers.end()) {
            return;
        }
        const std::string& text = found->second;
        if (write(reader, text.data(), text.size()) < 0) {
            log_ << "reg_dump was not read" << std::endl;
        }
    }

    const ChipScript& script_;
    fs::path directory_;
    std::ofstream log_;
    WrittenFile command_;
    WrittenFile address_;
    std::mutex mutex_;
    std::uint32_t selected_ = 0;
};

} // namespace

void build_register_files(const ChipScript& script) {
    const fs::path directory = register_folder(script);
    fs::create_directories(directory);
    for (const char* name : {"aow", "reg_addr", "reg_dump"}) {
        make_pipe(directory / name);
    }
}

void serve_register_files(const ChipScript& script, const std::string& log_path) {
    RegisterServer server(script, register_folder(script), log_path);
    std::thread(&RegisterServer::serve_reads, &server).detach();
    server.serve_writes();
}

} // namespace bench

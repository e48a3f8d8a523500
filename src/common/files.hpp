// SPDX-License-Identifier: Apache-2.0
// Files, read and written so that none of them can wedge the run.
//
// A FIFO without a reader, a mount that hangs, a driver's file that sleeps: whichever call is
// stuck, it lets an interrupt in, and never inside the allocator or a stream.
#pragma once

#include "common/interrupts.hpp"
#include "common/unique_fd.hpp"

#include <dirent.h>

#include <array>
#include <cstddef>
#include <memory>
#include <span>
#include <string_view>

namespace wivex {

/// Makes a single system call that usually returns at once; one that is stuck lets an interrupt in.
template <typename Call>
auto call_on_file(Call call) {
    const InterruptsWhenStuck scope;
    return call();
}

/// Whether a path may end in a symbolic link. A path that anybody can replace may not.
enum class Links { follow, refuse };

/// Opens `path` with these flags. Returns nothing on failure, with the reason in errno.
UniqueFd open_file(const char* path, int flags, Links links = Links::follow);

/// Opens `path` for writing, made new or emptied.
UniqueFd open_to_write(const char* path, Links links = Links::follow);

/// True when there is something at `path` that can be read.
bool can_be_read(const char* path);

class FileReader {
public:
    explicit FileReader(UniqueFd file) : file_(std::move(file)) {}

    explicit operator bool() const {
        return static_cast<bool>(file_);
    }

    /// The next byte, or -1 at the end of the file and behind a failure.
    int get();

    /// The error number of a read that failed, or 0.
    int error() const {
        return error_;
    }

    /// Reads a line with its newline, as far as it fits, and a terminator. Returns false when there
    /// is none or the file cannot be read.
    bool read_line(std::span<char> line);

private:
    bool fill();

    UniqueFd file_;
    std::array<char, 4096> buffer_{};
    std::size_t position_ = 0;
    std::size_t length_ = 0;
    int error_ = 0;
};

class FileWriter {
public:
    FileWriter() = default;
    explicit FileWriter(UniqueFd file) : file_(std::move(file)) {}
    FileWriter(FileWriter&&) noexcept = default;
    FileWriter& operator=(FileWriter&&) noexcept = default;
    FileWriter(const FileWriter&) = delete;
    FileWriter& operator=(const FileWriter&) = delete;
    ~FileWriter() {
        close();
    }

    explicit operator bool() const {
        return static_cast<bool>(file_);
    }

    void put(std::string_view text);
    [[gnu::format(printf, 2, 3)]] void print(const char* format, ...);

    /// Writes what is still buffered and closes the file. Returns 0, or the error number of the
    /// first text that the file did not take.
    int close();

private:
    void flush();

    UniqueFd file_;
    std::array<char, 4096> buffer_{};
    std::size_t length_ = 0;
    int error_ = 0;
};

struct DirectoryCloser {
    void operator()(DIR* directory) const {
        closedir(directory);
    }
};
using Directory = std::unique_ptr<DIR, DirectoryCloser>;

/// Opens a directory; null on failure.
Directory open_directory(const char* path);

/// The next entry; null at the end, with errno 0, and on a failure, with its number.
const dirent* next_entry(const Directory& directory);

} // namespace wivex

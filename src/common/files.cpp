// SPDX-License-Identifier: Apache-2.0
#include "common/files.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdio>

namespace wivex {

namespace {

constexpr mode_t mode_of_new_files = 0666;

template <typename Call>
auto repeat_when_interrupted(Call call) {
    auto result = call_on_file(call);
    while (result < 0 && errno == EINTR) {
        result = call_on_file(call);
    }
    return result;
}

} // namespace

UniqueFd open_file(const char* path, int flags, Links links) {
    const int refusal = links == Links::refuse ? O_NOFOLLOW : 0;
    return UniqueFd(repeat_when_interrupted(
        [=] { return open(path, flags | refusal | O_CLOEXEC, mode_of_new_files); }));
}

UniqueFd open_to_write(const char* path, Links links) {
    return open_file(path, O_WRONLY | O_CREAT | O_TRUNC, links);
}

bool can_be_read(const char* path) {
    return static_cast<bool>(open_file(path, O_RDONLY));
}

bool FileReader::fill() {
    const ssize_t count = repeat_when_interrupted(
        [this] { return read(file_.get(), buffer_.data(), buffer_.size()); });
    error_ = count < 0 ? errno : 0;
    position_ = 0;
    length_ = count > 0 ? static_cast<std::size_t>(count) : 0;
    return length_ > 0;
}

int FileReader::get() {
    if (position_ == length_ && !fill()) {
        return -1;
    }
    return static_cast<unsigned char>(buffer_[position_++]);
}

bool FileReader::read_line(std::span<char> line) {
    std::size_t length = 0;
    int next = 0;
    while (next != '\n' && length + 1 < line.size()) {
        next = get();
        if (next < 0) {
            break;
        }
        line[length++] = static_cast<char>(next);
    }
    line[length] = '\0';
    return length > 0 && error_ == 0;
}

void FileWriter::put(std::string_view text) {
    while (!text.empty()) {
        if (length_ == buffer_.size()) {
            flush();
        }
        const std::size_t taken = text.copy(buffer_.data() + length_, buffer_.size() - length_);
        length_ += taken;
        text.remove_prefix(taken);
    }
}

void FileWriter::print(const char* format, ...) {
    std::array<char, 512> text{};
    va_list arguments;
    va_start(arguments, format);
    const int length = std::vsnprintf(text.data(), text.size(), format, arguments);
    va_end(arguments);
    if (length > 0) {
        put({text.data(), std::min(static_cast<std::size_t>(length), text.size() - 1)});
    }
}

void FileWriter::flush() {
    std::string_view text(buffer_.data(), length_);
    while (!text.empty() && error_ == 0) {
        const ssize_t written = repeat_when_interrupted(
            [this, text] { return write(file_.get(), text.data(), text.size()); });
        if (written <= 0) {
            error_ = written < 0 ? errno : EIO;
        } else {
            text.remove_prefix(static_cast<std::size_t>(written));
        }
    }
    length_ = 0;
}

int FileWriter::close() {
    if (!file_) {
        return 0;
    }
    flush();
    const int fd = file_.release();
    if (call_on_file([fd] { return ::close(fd); }) != 0 && error_ == 0 && errno != EINTR) {
        error_ = errno;
    }
    return error_;
}

Directory open_directory(const char* path) {
    UniqueFd file = open_file(path, O_RDONLY | O_DIRECTORY);
    Directory directory(file ? fdopendir(file.get()) : nullptr);
    if (directory) {
        file.release();
    }
    return directory;
}

const dirent* next_entry(const Directory& directory) {
    errno = 0;
    // Reading an entry allocates nothing.
    return call_on_file([&directory] { return readdir(directory.get()); });
}

} // namespace wivex

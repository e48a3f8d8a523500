// SPDX-License-Identifier: Apache-2.0
// Cuts a stream of bytes into console lines, in bounded memory whatever the bytes are.
#pragma once

#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>

namespace wivex::report {

/// A longer line is handed out in pieces of this many bytes.
constexpr std::size_t longest_line = 4096;

class LineSplitter {
public:
    /// Takes the next bytes and calls `take(std::string_view line)` for every line that they
    /// complete, without its newline and a carriage return before it. The view holds only for
    /// the call.
    template <typename Take>
    void feed(std::string_view bytes, Take&& take) {
        while (!bytes.empty()) {
            const void* const found = std::memchr(bytes.data(), '\n', bytes.size());
            if (found == nullptr) {
                hold(bytes, take);
                return;
            }
            const auto length =
                static_cast<std::size_t>(static_cast<const char*>(found) - bytes.data());
            end_line(bytes.substr(0, length), take);
            bytes.remove_prefix(length + 1);
        }
    }

    /// Hands out what stands after the last newline, if anything does.
    template <typename Take>
    void finish(Take&& take) {
        if (!held_.empty()) {
            end_line({}, take);
        }
    }

    /// The beginning of a line whose end has not come yet.
    std::string_view unfinished() const {
        return held_;
    }

private:
    template <typename Take>
    void end_line(std::string_view rest, Take&& take) {
        if (held_.empty() && rest.size() <= longest_line) {
            take(without_return(rest));
            return;
        }
        hold(rest, take);
        take(without_return(held_));
        held_.clear();
    }

    template <typename Take>
    void hold(std::string_view bytes, Take&& take) {
        while (held_.size() + bytes.size() > longest_line) {
            const std::size_t room = longest_line - held_.size();
            held_.append(bytes.substr(0, room));
            bytes.remove_prefix(room);
            take(std::string_view(held_));
            held_.clear();
        }
        held_.append(bytes);
    }

    static std::string_view without_return(std::string_view line) {
        while (!line.empty() && line.back() == '\r') {
            line.remove_suffix(1);
        }
        return line;
    }

    std::string held_;
};

} // namespace wivex::report

// SPDX-License-Identifier: Apache-2.0
// The last console lines, kept to show what came before a failure or what makes an iteration the
// worst of its run. Of fixed size: it is written for every line of the console.
#pragma once

#include <array>
#include <cstddef>
#include <cstring>
#include <string_view>

namespace wivex::report {

class RecentLines {
public:
    static constexpr std::size_t count = 48;
    static constexpr std::size_t width = 200;

    void add(std::string_view line) {
        Entry& entry = entries_.at(next_ % count);
        entry.length = line.size() < width ? line.size() : width;
        if (entry.length != 0) {
            std::memcpy(entry.text.data(), line.data(), entry.length);
        }
        ++next_;
    }

    /// The line `back` before the last one; empty when there is none.
    std::string_view before_last(std::size_t back) const {
        if (back >= count || back >= next_) {
            return {};
        }
        const Entry& entry = entries_.at((next_ - 1 - back) % count);
        return {entry.text.data(), entry.length};
    }

    std::size_t size() const {
        return next_ < count ? next_ : count;
    }

private:
    struct Entry {
        std::array<char, width> text;
        std::size_t length;
    };
    std::array<Entry, count> entries_{};
    std::size_t next_ = 0;
};

} // namespace wivex::report

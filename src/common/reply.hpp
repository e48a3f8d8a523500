// SPDX-License-Identifier: Apache-2.0
// Where a reply of the supplicant goes: a span over a caller's buffer that keeps room for the
// terminator.
#pragma once

#include "common/text.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <string_view>

namespace wivex {

class Reply {
public:
    /// Offers all of `buffer` but its last character, which the terminator may need. The buffer
    /// must outlive the reply.
    template <std::size_t size>
    explicit Reply(std::array<char, size>& buffer) : room_(buffer), length_(size - 1) {
        static_assert(size > 0, "the terminator needs room");
    }

    /// The same buffer, of which at most `capacity` characters are offered.
    Reply limited_to(std::size_t capacity) const {
        return Reply(room_.first(std::min(capacity, this->capacity()) + 1));
    }

    /// How many characters a reply may have.
    std::size_t capacity() const {
        return room_.size() - 1;
    }

    /// Where `capacity` characters can be stored.
    char* data() {
        return room_.data();
    }

    /// This reply, zeroed with the place of its terminator.
    Reply& cleared() {
        std::fill(room_.begin(), room_.end(), '\0');
        return *this;
    }

    /// Ends the text behind `length` characters, at most `capacity`.
    void end_at(std::size_t length) {
        length_ = std::min(length, capacity());
        room_[length_] = '\0';
    }

    /// The length of the last reply, zero bytes inside it included; `capacity` when there was none.
    std::size_t length() const {
        return length_;
    }

    /// The text up to its first zero byte.
    const char* c_str() const {
        return room_.data();
    }

    bool contains(std::string_view part) const {
        return wivex::contains(c_str(), part);
    }

private:
    explicit Reply(std::span<char> room) : room_(room), length_(room.size() - 1) {}

    std::span<char> room_;
    std::size_t length_;
};

} // namespace wivex

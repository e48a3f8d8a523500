// SPDX-License-Identifier: Apache-2.0
// A text of bounded length that never allocates; what does not fit is cut.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

namespace wivex {

/// Holds at most `Size` - 1 characters and a terminating zero.
template <std::size_t Size>
class FixedText {
public:
    FixedText() = default;
    explicit FixedText(std::string_view text) {
        append(text);
    }

    void append(std::string_view text) {
        const std::size_t length = std::min(text.size(), Size - 1 - length_);
        std::copy_n(text.begin(), length, characters_.begin() + length_);
        length_ += length;
    }

    void append(char character) {
        if (length_ < Size - 1) {
            characters_[length_++] = character;
        }
    }

    const char* c_str() const {
        return characters_.data();
    }
    std::string_view view() const {
        return {characters_.data(), length_};
    }

private:
    std::array<char, Size> characters_{};
    std::size_t length_ = 0;
};

} // namespace wivex

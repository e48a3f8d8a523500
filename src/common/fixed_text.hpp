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
        const std::size_t used = view().size();
        const std::size_t length = std::min(text.size(), Size - 1 - used);
        std::copy_n(text.begin(), length, characters_.begin() + used);
    }

    const char* c_str() const {
        return characters_.data();
    }
    std::string_view view() const {
        return characters_.data();
    }

private:
    std::array<char, Size> characters_{};
};

} // namespace wivex

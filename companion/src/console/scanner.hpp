// SPDX-License-Identifier: Apache-2.0
// Takes a text apart from its start; once something does not fit, everything fails.
#pragma once

#include <cstddef>
#include <string_view>

namespace wivex::report {

class Scanner {
public:
    explicit Scanner(std::string_view text) : rest_(text) {}

    bool good() const {
        return good_;
    }
    std::string_view rest() const {
        return rest_;
    }
    bool at(char c) const {
        return good_ && !rest_.empty() && rest_.front() == c;
    }
    void expect(char c);
    /// Takes `c` when it stands there, and tells whether it did.
    bool optional(char c);
    void blanks();

    /// A whole number of `least` to `most` digits.
    long number(std::size_t least, std::size_t most);
    /// A number with or without a fraction.
    double decimal();
    /// What stands before `c`, which is taken too.
    std::string_view until(char c);
    /// ".123" or ",123" as a part of a second; 0 when there is none.
    double fraction();
    /// hh:mm:ss with an optional fraction, in seconds.
    double clock();

private:
    std::string_view rest_;
    bool good_ = true;
};

} // namespace wivex::report

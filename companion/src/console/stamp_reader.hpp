// SPDX-License-Identifier: Apache-2.0
// Time stamps that a logging tool put before the lines of a console: found, and taken away.
#pragma once

#include "console/recogniser.hpp"
#include "console/stamp_clock.hpp"

#include <string>
#include <string_view>

namespace wivex::report {

class StampReader {
public:
    /// The line without its stamp. Only a text of the tool behind it makes a stamp of something.
    std::string_view strip(std::string_view line, const Recogniser& recogniser);

    /// Whether the console has stamps.
    bool active() const {
        return format_ != StampFormat::none;
    }

    /// What the stamps so far tell.
    const StampClock& clock() const {
        return clock_;
    }

    /// Seconds by which the clock jumped at the last line; 0: it did not.
    double jump() const {
        return text_.empty() ? 0 : clock_.jump();
    }

    /// The stamp of the last line as local date and time; empty when it does not tell both.
    std::string date_and_time() const;

private:
    StampFormat format_ = StampFormat::none;
    StampClock clock_;
    std::string_view text_;
};

} // namespace wivex::report

// SPDX-License-Identifier: Apache-2.0
// Time stamps that a logging tool put before the lines of a console: found, taken away, and read
// as a clock that runs on past midnight.
#pragma once

#include "console/recogniser.hpp"
#include "console/time_stamps.hpp"

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

    /// Seconds of the last stamp; only differences mean something.
    double seconds() const {
        return seconds_;
    }

    /// The stamp of the last line as local date and time; empty when it does not tell both.
    std::string date_and_time() const;

private:
    StampFormat format_ = StampFormat::none;
    double seconds_ = 0;
    double days_ = 0;
    std::string_view text_;
};

} // namespace wivex::report

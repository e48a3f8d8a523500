// SPDX-License-Identifier: Apache-2.0
// Time stamps that a logging tool put before the lines of a console: found, taken away, and read
// as a clock that runs on past midnight.
#pragma once

#include "figures.hpp"
#include "recogniser.hpp"

#include <ctime>
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

/// Seconds since 1970 as "YYYY-MM-DD hh:mm:ss" in local time.
std::string local_time(std::time_t seconds);

} // namespace wivex::report

// SPDX-License-Identifier: Apache-2.0
// Reads a console and builds the model of its runs: splits it into iterations and phases and
// counts failures as the tool records them.
#pragma once

#include "console/line_splitter.hpp"
#include "reader/log_builder.hpp"

#include <string_view>

namespace wivex::report {

class RunReader {
public:
    explicit RunReader(const ReaderOptions& options = {}) : builder_(options) {}

    /// Takes the next bytes of the console, read at `now` (seconds of any steady clock).
    void feed(std::string_view bytes, double now = 0);

    /// The console has ended: closes what is open.
    void finish(double now = 0);

    const Log& log() const {
        return builder_.log();
    }
    /// What was learnt so far and what is under way, for a live view.
    Progress progress() const {
        return {builder_.log(), builder_.now()};
    }

private:
    void set_clock(double now);
    void take_line(std::string_view whole);

    LineSplitter splitter_;
    LogBuilder builder_;
};

} // namespace wivex::report

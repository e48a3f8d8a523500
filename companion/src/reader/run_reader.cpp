// SPDX-License-Identifier: Apache-2.0
#include "reader/run_reader.hpp"

#include "reader/take.hpp"

namespace wivex::report {

void RunReader::feed(std::string_view bytes, double now) {
    builder_.add_bytes(bytes.size());
    set_clock(now);
    splitter_.feed(bytes, [this](std::string_view line) { take_line(line); });
    builder_.settle();
}

void RunReader::finish(double now) {
    set_clock(now);
    splitter_.finish([this](std::string_view line) { take_line(line); });
    builder_.finish();
}

// A console with stamps has a clock of its own.
void RunReader::set_clock(double now) {
    if (!builder_.console().stamps().active()) {
        builder_.set_time(builder_.arrival(now));
    }
}

void RunReader::take_line(std::string_view whole) {
    LineReader& console = builder_.console();
    const std::string_view line = console.without_stamp(whole);
    const StampReader& stamps = console.stamps();
    if (stamps.active()) {
        if (stamps.jump() != 0) {
            builder_.clock_jumped(stamps.jump());
        }
        builder_.set_time({stamps.clock().seconds(), stamps.clock().instant()});
    }
    builder_.add_line(line);
    bool told = false;
    for (const Finding& finding : console.read(line)) {
        told = told || std::holds_alternative<ToolText>(finding) ||
               std::holds_alternative<UnknownText>(finding);
        take(builder_, finding);
    }
    builder_.end_line(whole, told);
}

} // namespace wivex::report

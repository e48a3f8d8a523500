// SPDX-License-Identifier: Apache-2.0
#include "reader/run_reader.hpp"

#include "reader/take.hpp"

namespace wivex::report {

void RunReader::feed(std::string_view bytes, double now) {
    builder_.add_bytes(bytes.size());
    set_clock(now);
    splitter_.feed(bytes, [this](std::string_view line) { take_line(line); });
}

void RunReader::finish(double now) {
    set_clock(now);
    splitter_.finish([this](std::string_view line) { take_line(line); });
    builder_.finish();
}

// A console with stamps has a clock of its own.
void RunReader::set_clock(double now) {
    if (!builder_.console().stamps().active()) {
        builder_.set_clock(now);
    }
}

void RunReader::take_line(std::string_view line) {
    LineReader& console = builder_.console();
    line = console.without_stamp(line);
    if (console.stamps().active()) {
        builder_.set_clock(console.stamps().seconds());
    }
    builder_.add_line(line);
    for (const Finding& finding : console.read(line)) {
        take(builder_, finding);
    }
}

} // namespace wivex::report

// SPDX-License-Identifier: Apache-2.0
// What tells a run from all others while it is read: a digest of its lines, and when the first and
// the last of them came.
#pragma once

#include "common/digest.hpp"
#include "model/run.hpp"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace wivex::report {

/// When a line of the console came. `instant` has no value when that is not known.
struct LineTime {
    /// On a clock that never jumps; only differences mean something.
    double steady = 0;
    std::optional<Instant> instant;
};

class RunTrace {
public:
    /// `run` begins with the next line.
    void begin(Run& run, const LineTime& time);

    /// The next line of the run, as it stands on the console. Empty ones do not count: who saves
    /// consoles one behind the other may add some.
    void take_line(std::string_view line, const LineTime& time);

    /// Writes what is known so far into the run.
    void settle(Run& run) const;

    /// When the last line of the run came, on the clock that never jumps.
    double last_moment() const {
        return last_.steady;
    }

    /// The run has come to its end: its lines are known to those that follow.
    void end(const Run& run);

private:
    Digest digest_;
    /// Lines that the digest does not hold yet.
    std::string pending_;
    LineTime began_;
    LineTime last_;
    std::map<DigestValue, std::uint32_t> ended_;
};

} // namespace wivex::report

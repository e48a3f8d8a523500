// SPDX-License-Identifier: Apache-2.0
// When the lines of a console came, and what of it can be trusted.

#include "common/local_zone.hpp"
#include "reader/log_builder.hpp"

#include <chrono>
#include <limits>

namespace wivex::report {

double system_seconds() {
    using namespace std::chrono;
    return duration<double>(system_clock::now().time_since_epoch()).count();
}

LineTime LogBuilder::arrival(double now) const {
    if (!options_.arrival_times) {
        return {now, {}};
    }
    const double wall = options_.wall_clock();
    return {now, Instant{wall, local_offset(wall)}};
}

void LogBuilder::clock_jumped(double seconds) {
    if (run_ == nullptr || run_over_) {
        return;
    }
    ClockJumps& jumps = run_->when.jumps;
    if (jumps.count == 0) {
        jumps.first_seconds = seconds;
        jumps.first_line = log_.lines + 1;
    }
    ++jumps.count;
    run_began_ = std::numeric_limits<double>::quiet_NaN();
    current_.lose_time();
}

void LogBuilder::end_line(std::string_view line, bool told) {
    // Behind the end of a run only the tool's own lines belong to it.
    if (run_ != nullptr && (!run_over_ || told)) {
        trace_.take_line(line, time_);
    }
}

void LogBuilder::settle() {
    if (run_ != nullptr) {
        run_->when.zone_assumed =
            run_->times == TimeSource::stamps && console_.stamps().clock().zone_assumed();
        trace_.settle(*run_);
    }
}

} // namespace wivex::report

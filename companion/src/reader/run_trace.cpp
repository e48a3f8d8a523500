// SPDX-License-Identifier: Apache-2.0
#include "reader/run_trace.hpp"

#include <cmath>

namespace wivex::report {

namespace {

constexpr std::size_t most_remembered = 4096;
constexpr std::size_t most_pending = 4096;
// Clocks of machines are set right by so much, and lines come late.
constexpr double tolerance = 5;

} // namespace

void RunTrace::begin(Run& run, const LineTime& time) {
    digest_ = Digest();
    pending_.clear();
    began_ = time;
    last_ = time;
    run.when.began = time.instant;
}

void RunTrace::take_line(std::string_view line, const LineTime& time) {
    if (line.empty()) {
        return;
    }
    // Many lines at once are hashed in half the time.
    pending_.append(line);
    pending_ += '\n';
    if (pending_.size() > most_pending) {
        digest_.add(pending_);
        pending_.clear();
    }
    last_ = time;
}

void RunTrace::settle(Run& run) const {
    Digest digest = digest_;
    digest.add(pending_);
    run.lines_digest = digest.value();
    const auto twins = ended_.find(run.lines_digest);
    run.twins_before = twins == ended_.end() ? 0 : twins->second;
    if (run.times == TimeSource::none) {
        run.when = {};
        return;
    }
    run.when.ended = last_.instant;
    if (run.times != TimeSource::arrival || !began_.instant || !last_.instant) {
        return;
    }
    const double jump = last_.instant->utc - began_.instant->utc - (last_.steady - began_.steady);
    if (std::fabs(jump) > tolerance) {
        run.when.jumps = {1, jump, 0};
    }
}

void RunTrace::end(const Run& run) {
    if (ended_.size() < most_remembered) {
        ++ended_[run.lines_digest];
    }
}

} // namespace wivex::report

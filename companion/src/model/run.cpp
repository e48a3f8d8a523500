// SPDX-License-Identifier: Apache-2.0
#include "model/run.hpp"

#include <algorithm>
#include <cmath>

namespace wivex::report {

void Spread::add(float value) {
    if (std::isnan(value)) {
        return;
    }
    least = count == 0 ? value : std::min(least, value);
    most = count == 0 ? value : std::max(most, value);
    sum += value;
    ++count;
}

void Spread::add(const Spread& other) {
    if (other.count == 0) {
        return;
    }
    least = count == 0 ? other.least : std::min(least, other.least);
    most = count == 0 ? other.most : std::max(most, other.most);
    sum += other.sum;
    count += other.count;
}

void Iteration::forget_times() {
    start = unknown_time;
    seconds = unknown_time;
    for (PhaseRecord& record : phases) {
        record.seconds = unknown_time;
    }
}

void Slice::add(const Iteration& iteration) {
    if (iterations == 0) {
        first = iteration.number;
    }
    ++iterations;
    ++outcomes.at(static_cast<std::size_t>(iteration.outcome));
    warned += iteration.warned ? 1 : 0;
    if (iteration.throughput >= 0) {
        throughput.add(iteration.throughput);
    }
    signal.add(iteration.signal);
    for (std::size_t i = 0; i < phase_count; ++i) {
        if (iteration.phases[i].was_completed()) {
            seconds[i].add(iteration.phases[i].seconds);
        }
    }
}

void Slice::add(const Slice& other) {
    iterations += other.iterations;
    warned += other.warned;
    throughput.add(other.throughput);
    signal.add(other.signal);
    for (std::size_t i = 0; i < outcomes.size(); ++i) {
        outcomes[i] += other.outcomes[i];
    }
    for (std::size_t i = 0; i < phase_count; ++i) {
        seconds[i].add(other.seconds[i]);
    }
}

void Timeline::add(const Iteration& iteration) {
    if (slices_.empty() || slices_.back().iterations >= width_) {
        if (slices_.size() == most_slices) {
            for (std::size_t i = 0; i < most_slices / 2; ++i) {
                Slice joined = slices_[2 * i];
                joined.add(slices_[2 * i + 1]);
                slices_[i] = joined;
            }
            slices_.resize(most_slices / 2);
            width_ *= 2;
        }
        slices_.emplace_back();
    }
    slices_.back().add(iteration);
}

void Timeline::forget_times() {
    for (Slice& slice : slices_) {
        slice.seconds = {};
    }
}

std::vector<Cause> Run::told_causes() const {
    std::vector<Cause> told;
    for (std::size_t i = 0; i < cause_count; ++i) {
        if (causes[i].all() != 0) {
            told.push_back(static_cast<Cause>(i));
        }
    }
    return told;
}

std::vector<SubCauseCount> Run::behind(Cause cause) const {
    std::vector<SubCauseCount> told;
    const auto& counts = sub_causes.at(index_of(cause));
    for (std::size_t i = 1; i < counts.size(); ++i) {
        if (counts[i] != 0) {
            told.push_back({static_cast<SubCause>(i), counts[i]});
        }
    }
    return told;
}

std::uint32_t Run::failures_of_test_case(int test_case) const {
    std::uint32_t sum = 0;
    for (std::size_t i = 0; i < cause_count; ++i) {
        const auto cause = static_cast<Cause>(i);
        if (test_case_of(cause, mode) == test_case) {
            sum += causes[i].failures * records_of(cause, mode);
        }
    }
    return sum;
}

std::uint32_t Run::failures_without_test_case() const {
    if (mode != Mode::unknown) {
        return 0;
    }
    return causes[index_of(Cause::session_not_open)].failures +
           causes[index_of(Cause::session_lost)].failures;
}

std::uint32_t Run::all_failures() const {
    std::uint32_t sum = failures_without_test_case();
    for (std::size_t i = 0; i < cause_count; ++i) {
        const auto cause = static_cast<Cause>(i);
        if (test_case_of(cause, mode) != 0) {
            sum += causes[i].failures * records_of(cause, mode);
        }
    }
    return sum;
}

} // namespace wivex::report

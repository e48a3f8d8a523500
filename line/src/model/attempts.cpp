// SPDX-License-Identifier: Apache-2.0
#include "model/attempts.hpp"

#include <algorithm>
#include <limits>
#include <tuple>

namespace wivex::line {

namespace {

constexpr std::int64_t last = std::numeric_limits<std::int64_t>::max();

bool belongs(const RunKey& run, const Attempt& attempt, const RunKey& first) {
    return run.attempt ? run.attempt == attempt.number
                       : !attempt.number && run.report_id == first.report_id;
}

void join(Attempt& attempt, const RunKey& run, std::size_t place) {
    if (attempt.runs.empty()) {
        attempt.number = run.attempt;
        attempt.station = run.station;
    }
    if (!run.passed && attempt.passed) {
        attempt.passed = false;
        attempt.cause = run.cause;
        attempt.station = run.station;
    }
    attempt.began = std::min(attempt.began.value_or(last), run.began.value_or(last));
    if (attempt.began == last) {
        attempt.began.reset();
    }
    attempt.runs.push_back(place);
}

} // namespace

std::vector<Attempt> attempts_of(std::span<const RunKey> runs) {
    std::vector<Attempt> attempts;
    for (std::size_t i = 0; i < runs.size(); ++i) {
        const auto found = std::ranges::find_if(attempts, [&](const Attempt& attempt) {
            return belongs(runs[i], attempt, runs[attempt.runs.front()]);
        });
        join(found == attempts.end() ? attempts.emplace_back() : *found, runs[i], i);
    }
    const auto order = [&](const Attempt& attempt) {
        return std::tuple(attempt.number.value_or(last), attempt.began.value_or(last),
                          runs[attempt.runs.front()].run_no);
    };
    std::ranges::sort(attempts, {}, order);
    return attempts;
}

Attempt first_attempt(std::span<const Attempt> attempts) {
    Attempt first = attempts.front();
    if (first.number.value_or(1) != 1) {
        first.passed = false;
        first.cause = unseen_first_attempt;
    }
    return first;
}

} // namespace wivex::line

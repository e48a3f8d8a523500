// SPDX-License-Identifier: Apache-2.0
// The worst iterations of a run by each of its figures, and the console lines that show them. Of
// bounded size.
#pragma once

#include "model/limits.hpp"
#include "model/series.hpp"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace wivex::report {

/// The last console lines of an iteration.
struct Excerpt {
    std::uint32_t iteration = 0;
    /// Numbers of the iteration's console lines, from 1; the excerpt ends with the last one.
    std::uint64_t first_line = 0;
    std::uint64_t last_line = 0;
    /// As they stand on the console, each with a newline: many excerpts are let go of unseen.
    std::string text;
};

/// The worst iterations by one figure, the worst first.
class WorstList {
public:
    static constexpr std::size_t most = 3;

    /// Takes a value; `by` says what is worse. True when it is among the worst.
    bool offer(Sample sample, Bound by);

    std::span<const Sample> samples() const {
        return {samples_.data(), count_};
    }
    bool names(std::uint32_t iteration) const;

private:
    std::array<Sample, most> samples_{};
    std::size_t count_ = 0;
};

struct WorstIterations {
    WorstList throughput;
    WorstList signal;
    WorstList iteration;
    std::array<WorstList, phase_count> phases{};
    std::vector<Excerpt> excerpts;

    /// Keeps the lines of one of them, and lets go of what is no longer needed.
    void keep(Excerpt excerpt);

    /// Null when there is none.
    const Excerpt* excerpt_of(std::uint32_t number) const;
    void forget_times();

    bool is_needed(std::uint32_t number) const;
    void let_go();
};

} // namespace wivex::report

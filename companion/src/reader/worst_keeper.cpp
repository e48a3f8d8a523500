// SPDX-License-Identifier: Apache-2.0
#include "reader/worst_keeper.hpp"

#include <algorithm>
#include <cmath>

namespace wivex::report {

namespace {

// What never takes longer is not worth an excerpt.
constexpr float shortest_noted = 0.05F;

constexpr std::size_t usual_size = 2048;

bool is_among_worst(WorstIterations& worst, const Iteration& iteration) {
    const std::uint32_t number = iteration.number;
    bool among = iteration.throughput >= 0 &&
                 worst.throughput.offer({number, iteration.throughput}, Bound::at_least);
    if (!std::isnan(iteration.signal)) {
        among = worst.signal.offer({number, iteration.signal}, Bound::at_least) || among;
    }
    if (iteration.outcome != Outcome::unfinished && iteration.seconds >= shortest_noted) {
        among = worst.iteration.offer({number, iteration.seconds}, Bound::at_most) || among;
    }
    for (const Phase phase : all_phases()) {
        const PhaseRecord& record = iteration.phase(phase);
        if (record.was_completed() && record.seconds >= shortest_noted) {
            WorstList& list = worst.phases.at(index_of(phase));
            among = list.offer({number, record.seconds}, Bound::at_most) || among;
        }
    }
    return among;
}

} // namespace

void note_worst(Run& run, const Iteration& iteration, const RecentLines& recent, LineRange lines,
                std::size_t behind) {
    if (!is_among_worst(run.worst, iteration)) {
        return;
    }
    Excerpt excerpt{iteration.number, lines.first, lines.last, {}};
    excerpt.text.reserve(usual_size);
    const std::size_t own = lines.last - std::min(lines.last, lines.first) + 1;
    const std::size_t there = recent.size() - std::min(recent.size(), behind);
    for (std::size_t back = std::min(own, there); back > 0; --back) {
        excerpt.text += recent.before_last(back - 1 + behind);
        excerpt.text += '\n';
    }
    run.worst.keep(std::move(excerpt));
}

} // namespace wivex::report

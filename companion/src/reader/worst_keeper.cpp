// SPDX-License-Identifier: Apache-2.0
#include "reader/worst_keeper.hpp"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <string>
#include <string_view>

namespace wivex::report {

namespace {

// What never takes longer is not worth an excerpt.
constexpr float shortest_noted = 0.05F;

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

// Asked for often where runs are short: the lines are copied in one go.
std::string last_lines(const RecentLines& recent, std::size_t count, std::size_t behind) {
    std::size_t size = 0;
    for (std::size_t back = 0; back < count; ++back) {
        size += recent.before_last(back + behind).size() + 1;
    }
    std::string text(size, '\n');
    for (std::size_t back = 0; back < count; ++back) {
        const std::string_view line = recent.before_last(back + behind);
        size -= line.size() + 1;
        std::memcpy(&text[size], line.data(), line.size());
    }
    return text;
}

} // namespace

void note_worst(Run& run, const Iteration& iteration, const RecentLines& recent, LineRange lines,
                std::size_t behind) {
    if (!is_among_worst(run.worst, iteration)) {
        return;
    }
    const std::uint64_t own = lines.last - std::min(lines.last, lines.first) + 1;
    const std::size_t there = recent.size() - std::min(recent.size(), behind);
    const auto shown = static_cast<std::size_t>(std::min<std::uint64_t>(own, there));
    run.worst.keep({iteration.number, lines.first, lines.last, last_lines(recent, shown, behind)});
}

} // namespace wivex::report

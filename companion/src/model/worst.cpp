// SPDX-License-Identifier: Apache-2.0
#include "model/worst.hpp"

#include <algorithm>

namespace wivex::report {

bool WorstList::offer(Sample sample, Bound by) {
    // Of equal ones the first stays.
    const auto is_worse = [&](const Sample& kept) {
        return by == Bound::at_least ? sample.value < kept.value : sample.value > kept.value;
    };
    std::size_t place = 0;
    while (place < count_ && !is_worse(samples_.at(place))) {
        ++place;
    }
    if (place == most) {
        return false;
    }
    count_ = std::min(count_ + 1, most);
    std::copy_backward(samples_.begin() + static_cast<std::ptrdiff_t>(place),
                       samples_.begin() + static_cast<std::ptrdiff_t>(count_ - 1),
                       samples_.begin() + static_cast<std::ptrdiff_t>(count_));
    samples_.at(place) = sample;
    return true;
}

bool WorstList::names(std::uint32_t iteration) const {
    const std::span<const Sample> kept = samples();
    return std::ranges::find(kept, iteration, &Sample::iteration) != kept.end();
}

bool WorstIterations::is_needed(std::uint32_t number) const {
    return throughput.names(number) || signal.names(number) || iteration.names(number) ||
           std::ranges::any_of(phases, [&](const WorstList& list) { return list.names(number); });
}

void WorstIterations::let_go() {
    std::erase_if(excerpts, [&](const Excerpt& excerpt) { return !is_needed(excerpt.iteration); });
}

void WorstIterations::keep(Excerpt excerpt) {
    excerpts.push_back(std::move(excerpt));
    let_go();
}

const Excerpt* WorstIterations::excerpt_of(std::uint32_t number) const {
    const auto found = std::ranges::find(excerpts, number, &Excerpt::iteration);
    return found == excerpts.end() ? nullptr : &*found;
}

void WorstIterations::forget_times() {
    iteration = {};
    phases = {};
    let_go();
}

} // namespace wivex::report

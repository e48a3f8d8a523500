// SPDX-License-Identifier: Apache-2.0
#include "model/worst.hpp"

#include <algorithm>

namespace wivex::report {

bool WorstList::offer(Sample sample, Bound by) {
    // Of equal ones the first stays.
    const auto place = std::ranges::find_if(samples_, [&](const Sample& kept) {
        return by == Bound::at_least ? sample.value < kept.value : sample.value > kept.value;
    });
    if (place == samples_.end() && samples_.size() == most) {
        return false;
    }
    samples_.insert(place, sample);
    if (samples_.size() > most) {
        samples_.pop_back();
    }
    return true;
}

bool WorstList::names(std::uint32_t iteration) const {
    return std::ranges::find(samples_, iteration, &Sample::iteration) != samples_.end();
}

bool WorstIterations::is_needed(std::uint32_t number) const {
    return throughput.names(number) || signal.names(number) || iteration.names(number) ||
           std::ranges::any_of(phases, [&](const WorstList& list) { return list.names(number); });
}

void WorstIterations::let_go() {
    std::erase_if(excerpts_, [&](const Excerpt& excerpt) { return !is_needed(excerpt.iteration); });
}

void WorstIterations::keep(Excerpt excerpt) {
    excerpts_.push_back(std::move(excerpt));
    let_go();
}

const Excerpt* WorstIterations::excerpt_of(std::uint32_t number) const {
    const auto found = std::ranges::find(excerpts_, number, &Excerpt::iteration);
    return found == excerpts_.end() ? nullptr : &*found;
}

void WorstIterations::forget_times() {
    iteration = {};
    phases = {};
    let_go();
}

} // namespace wivex::report

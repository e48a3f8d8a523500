// SPDX-License-Identifier: Apache-2.0
// The first page of the site: what the whole line knows.
#pragma once

#include "model/factory.hpp"
#include "store/factory_walk.hpp"

#include <string>

namespace wivex::line {

/// What the page is made of.
struct LineFacts {
    const Factory& factory;
    const std::vector<MeasureGroup>& measures;
    const std::vector<LimitGroup>& limits;
    const Doubts& doubts;
};

std::string line_page(const LineFacts& facts);

/// The parts about figures: by station, by firmware, and against limits.
std::string figures_cards(const LineFacts& facts);

} // namespace wivex::line

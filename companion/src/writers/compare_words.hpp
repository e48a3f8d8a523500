// SPDX-License-Identifier: Apache-2.0
// A comparison in words, for a terminal and for its page.
#pragma once

#include "model/comparison.hpp"

#include <string>
#include <string_view>

namespace wivex::report {

/// "significantly worse", "no significant difference", ...
std::string_view words_of(Change change);

/// "94.2 Mbit/s".
std::string median_words(const ComparedFigure& figure, const Middle& middle);

/// "3 of 200 (1.5 %)".
std::string share_words(const Share& share);

/// The median's change: "-3.1 Mbit/s (-3.3 %)"; empty when one side has no value.
std::string change_words(const ComparedFigure& figure);

/// "0.012", or "< 0.001".
std::string chance_words(double probability);

/// "before.json: p2p-client, 2 runs, 300 iterations; serial X, station Y".
std::string side_words(const Reported& reported);

/// Some plain lines: the outcome, and what differs.
std::string comparison_summary(const Comparison& comparison);

} // namespace wivex::report

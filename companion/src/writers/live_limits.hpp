// SPDX-License-Identifier: Apache-2.0
// What the live view shows of limits: a figure that breaks one turns, by a mark and by its colour.
#pragma once

#include "model/run.hpp"

#include <string>
#include <string_view>

namespace wivex::report {

/// `text`, turned when `value` breaks a limit on the figure of single iterations, or on `shown` of
/// all.
std::string live_figure(const Run& run, Figure figure, Statistic shown, double value,
                        const std::string& text);

/// The limits that are broken so far; empty when none is.
std::string broken_limits_line(const Run& run);

/// ", outside dhcp <= 5 s"; empty when the iteration breaks none.
std::string broken_by_words(const Run& run, const Iteration& iteration);

/// A line for the screen with its turned figures in colour.
std::string painted(std::string_view line);

} // namespace wivex::report

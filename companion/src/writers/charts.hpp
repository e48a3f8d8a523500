// SPDX-License-Identifier: Apache-2.0
// The pictures of the page: the strip of iterations and curves over the iterations. Plain HTML
// and SVG; everything that a picture shows also stands in its text alternative.
#pragma once

#include "model/run.hpp"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace wivex::report {

/// One coloured cell an iteration, or a slice of them in long runs. A cell of a failure leads to
/// the anchor "PREFIXiNUMBER".
std::string iteration_strip(const Run& run, std::string_view prefix);

/// A point of a curve: iterations `first` and those after it, together.
struct CurvePoint {
    std::uint32_t first = 0;
    Spread value;
};

struct CurveLabels {
    std::string_view what; ///< "Throughput"
    std::string_view unit; ///< "Mbit/s"
    /// Drawn as lines.
    std::vector<Limit> limits = {};
};

/// A curve between 0 and the largest value or, of negative ones, the smallest, with its range where
/// a point stands for several.
std::string curve(std::span<const CurvePoint> points, std::uint32_t iterations,
                  const CurveLabels& labels, bool small);

std::vector<CurvePoint> throughput_points(const Run& run);
std::vector<CurvePoint> signal_points(const Run& run);
std::vector<CurvePoint> seconds_points(const Run& run, Phase phase);

} // namespace wivex::report

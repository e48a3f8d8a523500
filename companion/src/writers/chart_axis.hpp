// SPDX-License-Identifier: Apache-2.0
// The scale of a chart, and the limits that are drawn into it.
#pragma once

#include "model/limits.hpp"
#include "model/run.hpp"

#include <string>
#include <vector>

namespace wivex::report {

/// A number with one place, as coordinates have it.
std::string coordinate(double value);

/// From 0 to a round number, or from a negative one to 0.
class Axis {
public:
    Axis(double least, double most);

    double bottom() const {
        return bottom_;
    }
    double top() const {
        return top_;
    }
    /// 0 at the bottom, 1 at the top.
    double share_of(double value) const {
        return (value - bottom_) / (top_ - bottom_);
    }

private:
    double bottom_ = 0;
    double top_ = 1;
};

/// The limits of `run` on a figure of `of`, whatever their statistic.
std::vector<Limit> limits_on(const Run& run, Limit of);

/// "; limits: throughput >= 30 Mbit/s", or nothing.
std::string limits_alternative(const std::vector<Limit>& limits);

/// A picture of 1000 by 100 that also says in words what it shows.
std::string picture(const std::string& words, const std::string& markup);

/// A line along `path` that says its limit.
std::string limit_line(const Limit& limit, const std::string& path);

/// Lines at what the limits say, in a chart of 1000 by 100.
std::string limit_lines(const std::vector<Limit>& limits, const Axis& axis);

} // namespace wivex::report

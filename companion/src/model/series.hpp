// SPDX-License-Identifier: Apache-2.0
// A figure over the iterations of a run: where it was least and most, how it is spread, and whether
// it drifts. Of bounded size: a long run keeps every second, fourth, ... value.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace wivex::report {

struct Sample {
    std::uint32_t iteration = 0;
    float value = 0;
};

/// What a rank test says of a figure over the iterations.
struct Trend {
    /// There are enough values for a test.
    bool known = false;
    /// How far the order of the values is from chance, in standard deviations; its sign is the
    /// direction.
    double z = 0;
    /// The chance of so much order in values without a trend.
    double probability = 1;
    /// What the figure changes by from the first to the last iteration, by the median slope.
    double change = 0;
    /// The same in parts of the median.
    double share = 0;

    bool is_significant() const {
        return known && probability < 0.01;
    }
    /// Significant, and large enough to matter.
    bool is_drift() const {
        return is_significant() && (share >= 0.1 || share <= -0.1);
    }
};

class Series {
public:
    static constexpr std::size_t most_kept = 4096;

    /// Values that are no numbers are left out.
    void add(std::uint32_t iteration, float value);

    bool empty() const {
        return kept_.empty();
    }
    /// How many there were, and their mean: of all, also of those that are not kept.
    std::uint32_t count() const {
        return count_;
    }
    double mean() const {
        return count_ == 0 ? 0 : sum_ / count_;
    }
    /// Evenly taken from all values; of a run that is not too long, all of them.
    std::span<const Sample> kept() const {
        return kept_;
    }
    bool keeps_all() const {
        return step_ == 1;
    }
    /// Of all values, also those that are not kept. Only when there is one.
    const Sample& least() const {
        return least_;
    }
    const Sample& most() const {
        return most_;
    }

    /// Of the kept values; `part` of them are not larger. Only when there is one.
    double quantile(double part) const;
    double median() const;

    Trend trend() const;

private:
    std::vector<Sample> kept_;
    Sample least_;
    Sample most_;
    double sum_ = 0;
    std::uint32_t count_ = 0;
    std::uint32_t step_ = 1;
    std::uint32_t skipped_ = 0;
};

} // namespace wivex::report

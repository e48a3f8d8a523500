// SPDX-License-Identifier: Apache-2.0
// Whether two groups differ by more than chance: figures by their ranks, counts by their shares.
// Neither needs to know how the figures are spread.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace wivex::report {

struct RankTest {
    /// Of the sum of ranks, in standard deviations from chance; positive: the second group is
    /// larger.
    double z = 0;
    /// The chance of so large a difference between groups of one kind, in either direction.
    double probability = 1;
    /// How often a value of the second group is larger than one of the first; a tie is half a win.
    double superiority = 0.5;
};

/// With fewer values in a group the ranks are too coarse to tell anything.
constexpr std::size_t fewest_ranked = 8;

/// Mann-Whitney, two-sided, corrected for ties and continuity. Nothing when a group is too small.
std::optional<RankTest> rank_test(std::span<const float> first, std::span<const float> second);

/// `hits` of `all` cases.
struct Share {
    std::uint32_t hits = 0;
    std::uint32_t all = 0;

    double part() const {
        return all == 0 ? 0 : static_cast<double>(hits) / all;
    }
};

/// The chance of so different shares, in either direction: Fisher's exact test, and of very many
/// cases the chi-squared test. 1 when a group is empty.
double share_test(Share first, Share second);

/// Corrects the chances of several tests for their number, after Holm: the least one counts as
/// often as there are tests, the next one once less, and so on.
std::vector<double> corrected_for_number(std::span<const double> probabilities);

} // namespace wivex::report

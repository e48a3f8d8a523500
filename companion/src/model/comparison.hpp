// SPDX-License-Identifier: Apache-2.0
// Two reports of one mode side by side, and what of the difference is more than chance.
#pragma once

#include "model/phases.hpp"
#include "model/rank_test.hpp"

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace wivex::report {

struct ReportedCause {
    std::string words;
    std::uint32_t count = 0;
};

/// What a run.json tells that can be compared: all its runs together.
struct Reported {
    /// Printable text.
    std::string name;
    std::string mode;
    std::string verdict;
    std::string verdict_words;
    std::string serial;
    std::string station;
    std::uint32_t runs = 0;
    std::uint32_t runs_left_out = 0;
    std::uint32_t iterations = 0;
    std::uint32_t failed = 0;
    /// By their short names.
    std::map<std::string, ReportedCause> causes;
    /// Of the iterations that are kept one by one.
    std::uint32_t iterations_kept = 0;
    std::vector<float> throughput;
    std::vector<float> signal;
    std::vector<float> seconds;
    std::array<std::vector<float>, phase_count> phases{};
};

/// In the order of weight.
enum class Change : std::uint8_t { none, better, too_few, lost, worse };

/// Below this the corrected chance is taken for more than chance.
constexpr double significance = 0.05;

/// Middle and end of the values of one side.
struct Middle {
    std::size_t count = 0;
    double median = 0;
    double percentile_95 = 0;
};

struct ComparedFigure {
    std::string_view name;
    std::string_view unit;
    Middle before;
    Middle after;
    /// Nothing when there are too few values.
    std::optional<RankTest> test;
    double corrected = 1;
    Change change = Change::none;
};

struct ComparedCount {
    std::string words;
    Share before;
    Share after;
    double probability = 1;
    double corrected = 1;
    Change change = Change::none;
};

struct Comparison {
    Reported before;
    Reported after;
    /// The first one: iterations that failed, of whatever cause.
    std::vector<ComparedCount> failures;
    std::vector<ComparedFigure> figures;
    std::size_t tests = 0;
    /// In words: why nothing can be concluded. Empty: something can.
    std::vector<std::string> doubts;

    bool is_worse() const;
    /// Nothing is significantly worse, and nothing keeps this from being judged.
    bool is_good_enough() const {
        return !is_worse() && doubts.empty();
    }
};

/// Both are of one mode.
Comparison compare(Reported before, Reported after);

/// The outcome in one sentence.
std::string outcome_of(const Comparison& comparison);

} // namespace wivex::report

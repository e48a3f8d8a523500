// SPDX-License-Identifier: Apache-2.0
#include "writers/live_limits.hpp"

#include "common/words.hpp"
#include "model/limit_verdict.hpp"
#include "writers/limit_words.hpp"

#include <algorithm>

namespace wivex::report {

namespace {

// Stand around a turned figure until the line is cut to the screen. No text holds them: what a
// console says is made printable first.
constexpr char turn = '\x0e';
constexpr char turn_back = '\x0f';

std::string turned(const std::string& text) {
    return turn + text + " !" + turn_back;
}

} // namespace

std::string live_figure(const Run& run, Figure figure, Statistic shown, double value,
                        const std::string& text) {
    const bool broken = std::ranges::any_of(run.limits, [&](const LimitTally& tally) {
        const Limit& limit = tally.limit;
        return limit.figure == figure &&
               (limit.statistic == Statistic::each || limit.statistic == shown) &&
               limit.is_broken_by(value);
    });
    return broken ? turned(text) : text;
}

std::string broken_limits_line(const Run& run) {
    std::string text;
    for (const LimitResult& result : judge_limits(run)) {
        if (result.verdict != LimitVerdict::outside) {
            continue;
        }
        text += (text.empty() ? "" : ", ") + text_of(result.limit) + " (" + value_words(result);
        if (result.broken != 0) {
            text += ", " + iterations_text(result.broken);
        }
        text += ")";
    }
    return text.empty() ? "" : turned("outside limits: " + text);
}

std::string broken_by_words(const Run& run, const Iteration& iteration) {
    std::string text;
    for (const Limit& limit : broken_by(run, iteration)) {
        text += (text.empty() ? ", outside " : ", ") + text_of(limit);
    }
    return text;
}

std::string painted(std::string_view line) {
    std::string text;
    bool is_turned = false;
    for (const char c : line) {
        if (c == turn || c == turn_back) {
            is_turned = c == turn;
            text += is_turned ? "\x1b[1;31m" : "\x1b[0m";
        } else {
            text += c;
        }
    }
    return is_turned ? text + "\x1b[0m" : text;
}

} // namespace wivex::report

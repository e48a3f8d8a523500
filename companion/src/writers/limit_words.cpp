// SPDX-License-Identifier: Apache-2.0
#include "writers/limit_words.hpp"

#include "common/words.hpp"
#include "model/limit_verdict.hpp"

#include <algorithm>

namespace wivex::report {

std::string value_words(const LimitResult& result) {
    if (!result.value) {
        return "";
    }
    const std::string_view unit = unit_of(result.limit);
    return exact_text(*result.value) + (unit.empty() ? "" : " " + std::string(unit));
}

std::string iterations_words(const LimitResult& result, std::size_t most) {
    const std::size_t shown = std::min(most, result.iterations.size());
    std::string text;
    for (std::size_t i = 0; i < shown; ++i) {
        text += (i == 0 ? "" : ", ") + std::to_string(result.iterations[i]);
    }
    return result.broken > shown ? text + " and " + std::to_string(result.broken - shown) + " more"
                                 : text;
}

std::string limit_sentence(const LimitResult& result) {
    std::string text = text_of(result.limit) + ": " + std::string(name_of(result.verdict));
    if (result.value) {
        text += ", " + value_words(result);
    }
    if (result.broken != 0) {
        text += "; " + iterations_text(result.broken) + ": " + iterations_words(result);
    }
    return result.why.empty() ? text : text + "; " + result.why;
}

std::string limits_sentence(const std::vector<LimitResult>& results) {
    const auto count = [&](LimitVerdict verdict) {
        return std::ranges::count(results, verdict, &LimitResult::verdict);
    };
    const std::string all = std::to_string(results.size());
    const std::string unknown = std::to_string(count(LimitVerdict::unknown));
    switch (worst_of(results).value_or(LimitVerdict::within)) {
    case LimitVerdict::outside:
        return "Outside limits: " + std::to_string(count(LimitVerdict::outside)) + " of " + all +
               " broken" + (unknown == "0" ? "" : ", " + unknown + " not known");
    case LimitVerdict::unknown:
        return "Limits not known: " + unknown + " of " + all + " cannot be judged";
    default:
        return results.empty() ? "" : "Within limits: all " + all + " kept";
    }
}

} // namespace wivex::report

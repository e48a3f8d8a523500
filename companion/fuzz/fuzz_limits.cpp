// SPDX-License-Identifier: Apache-2.0
// Any bytes as a file of limits. What is taken has to be a limit that can be written and read
// again.

#include "checks.hpp"
#include "model/limit_text.hpp"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace wivex::report;
using report_fuzz::require;

void check_limit(const Limit& limit) {
    require(std::isfinite(limit.value));
    require((limit.phase == Phase::none) == (limit.figure != Figure::phase));
    const std::string text = text_of(limit);
    std::vector<Limit> again;
    require(add_limit(again, text).empty());
    require(again.size() == 1 && text_of(again.front()) == text);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    std::vector<Limit> limits;
    const std::string problem = add_limits_of_file(limits, text, "limits");
    require(problem.size() < 1000);
    require(problem.find('\n') == std::string::npos);
    require(limits.size() <= most_limits);
    require(!problem.empty() || !limits.empty());
    for (const Limit& limit : limits) {
        check_limit(limit);
    }
    return 0;
}

// SPDX-License-Identifier: Apache-2.0
// Any bytes as two run.json that are compared. What is refused says why, and the page of what is
// not has to be well-formed.

#include "checks.hpp"
#include "reader/run_file.hpp"
#include "writers/compare_page.hpp"
#include "writers/compare_words.hpp"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace {

using namespace wivex::report;
using report_fuzz::check_well_formed;
using report_fuzz::require;

void check_comparison(const Comparison& comparison) {
    for (const ComparedCount& count : comparison.failures) {
        require(count.probability >= 0 && count.probability <= 1);
        require(count.corrected >= count.probability);
    }
    for (const ComparedFigure& figure : comparison.figures) {
        require(!figure.test || (figure.test->probability >= 0 && figure.test->probability <= 1));
    }
    require(comparison.is_good_enough() != (comparison.is_worse() || !comparison.doubts.empty()));
    require(!comparison_summary(comparison).empty());
    const std::string page = write_comparison_page(comparison);
    // Quoted words may say so, escaped; the heading of the page may not look like a pass.
    require(page.find("class=\"verdict passed\"") == std::string::npos);
    check_well_formed(page);
}

} // namespace

// A zero byte stands between the two; without one a text is compared with itself.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const std::size_t between = text.find('\0');
    Reported before;
    Reported after;
    before.name = "before.json";
    after.name = "after.json";
    const std::string problem = read_run_file(text.substr(0, between), before);
    const std::string other =
        read_run_file(between == std::string_view::npos ? text : text.substr(between + 1), after);
    for (const Reported& side : {before, after}) {
        require(side.throughput.size() <= size && side.causes.size() <= size);
    }
    require(problem.size() < 1000 && problem.find('\n') == std::string::npos);
    if (problem.empty() && other.empty() && before.mode == after.mode) {
        check_comparison(compare(before, after));
    }
    return 0;
}

// SPDX-License-Identifier: Apache-2.0
#include "writers/junit_limits.hpp"

#include "model/run.hpp"
#include "writers/limit_words.hpp"

namespace wivex::report {

void write_limits(JunitSuite& suite, const std::string& class_name,
                  const std::vector<LimitResult>& results) {
    for (const LimitResult& result : results) {
        const pugi::xml_node test =
            suite.test("limit " + text_of(result.limit), class_name, unknown_time);
        const JunitProblem problem{name_of(result.verdict), limit_sentence(result),
                                   iterations_words(result, LimitTally::most_named)};
        if (result.verdict == LimitVerdict::outside) {
            suite.fail(test, problem);
        } else if (result.verdict == LimitVerdict::unknown) {
            suite.error(test, problem);
        }
    }
}

} // namespace wivex::report

// SPDX-License-Identifier: Apache-2.0
#include "writers/run_words.hpp"

namespace wivex::report {

std::string cause_words(Cause cause) {
    const CauseRow& row = row_of(cause);
    return std::string(name_of(row.phase)) + ": " + std::string(row.words);
}

std::string failure_words(const Failure& failure) {
    const std::string_view behind = words_of(failure.sub_cause);
    return cause_words(failure.cause) + (behind.empty() ? "" : ": " + std::string(behind));
}

std::string_view uncounted_words(const Run& run) {
    return run.mode == Mode::unknown ? "the console does not tell the mode, hence not the test case"
                                     : "not counted in the result file";
}

} // namespace wivex::report

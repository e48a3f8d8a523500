// SPDX-License-Identifier: Apache-2.0
#include "model/test_cases.hpp"

#include <algorithm>

namespace wivex::report {

namespace {

bool was_seen(const Run& run, Phase phase) {
    return std::ranges::any_of(run.verdicts.at(index_of(phase)),
                               [](std::uint32_t count) { return count != 0; });
}

bool took_part(const Run& run, int test_case) {
    switch (test_case) {
    case 1:
    case 2:
        return true;
    case 3:
        return was_seen(run, Phase::mac);
    case 4:
        return was_seen(run, Phase::loopback);
    default:
        return test_case == test_case_of(run.mode);
    }
}

} // namespace

std::vector<TestCaseCount> test_cases_of(const Run& run) {
    std::vector<TestCaseCount> list;
    for (int number = 1; number <= last_test_case; ++number) {
        const std::uint32_t failures = run.failures_of_test_case(number);
        if (failures != 0 || took_part(run, number)) {
            list.push_back({number, title_of_test_case(number), failures});
        }
    }
    return list;
}

} // namespace wivex::report

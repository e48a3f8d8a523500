// SPDX-License-Identifier: Apache-2.0
// The test cases of the result file, as a run filled them. Nobody else knows how many there are.
#pragma once

#include "model/run.hpp"

#include <cstdint>
#include <string_view>
#include <vector>

namespace wivex::report {

struct TestCaseCount {
    int number = 0;
    /// What it examines.
    std::string_view title;
    /// As the result file counts them.
    std::uint32_t failures = 0;
};

/// The test cases that took part in `run`, in the order of the result file.
std::vector<TestCaseCount> test_cases_of(const Run& run);

} // namespace wivex::report

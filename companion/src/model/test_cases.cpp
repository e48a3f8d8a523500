// SPDX-License-Identifier: Apache-2.0
#include "model/test_cases.hpp"

#include <algorithm>
#include <array>

namespace wivex::report {

namespace {

struct CheckRow {
    int test_case;
    std::string_view title;
    /// The phase whose verdicts show that it took part; `Phase::none`: it always does.
    Phase shown_by;
};

constexpr auto checks = std::to_array<CheckRow>({
    {1, "module on the bus", Phase::none},
    {2, "driver and interface", Phase::none},
    {3, "MAC address", Phase::mac},
    {4, "loopback", Phase::loopback},
});

bool was_seen(const Run& run, Phase phase) {
    return phase == Phase::none ||
           std::ranges::any_of(run.verdicts.at(index_of(phase)),
                               [](std::uint32_t count) { return count != 0; });
}

} // namespace

std::vector<TestCaseCount> test_cases_of(const Run& run) {
    std::vector<TestCaseCount> list;
    const auto add = [&](int number, std::string_view title, bool took_part) {
        const std::uint32_t failures = run.failures_of_test_case(number);
        if (failures != 0 || took_part) {
            list.push_back({number, title, failures});
        }
    };
    for (const CheckRow& check : checks) {
        add(check.test_case, check.title, was_seen(run, check.shown_by));
    }
    for (const ModeRow& mode : mode_rows()) {
        if (mode.test_case != 0) {
            add(mode.test_case, mode.title, mode.mode == run.mode);
        }
    }
    std::ranges::sort(list, {}, &TestCaseCount::number);
    return list;
}

} // namespace wivex::report

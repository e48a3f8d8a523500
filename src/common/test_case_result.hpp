// SPDX-License-Identifier: Apache-2.0
// What is remembered of a test case: which codes occurred in which iterations.
#pragma once

#include "common/error_code.hpp"

#include <array>
#include <cstdint>
#include <map>
#include <vector>

namespace wivex {

struct FailureEntry {
    /// Iterations in the order in which they were recorded; duplicates are kept.
    std::vector<std::uint32_t> iterations;
    /// Number of records, the length of `iterations`.
    std::int32_t count = 0;
};

struct TestCaseResult {
    std::map<ErrorCode, FailureEntry> failures;
    std::int32_t enabled = 0;
};

inline constexpr std::size_t test_case_count = 10;

using TestCaseResults = std::array<TestCaseResult, test_case_count>;

/// Indices into the results; the result file calls index n "Test case n + 1".
namespace test_case {

inline constexpr int module = 0;
inline constexpr int driver = 1;
inline constexpr int mac_address = 2;
inline constexpr int loopback = 3;
inline constexpr int scan = 4;
inline constexpr int p2p_device = 5;
inline constexpr int autonomous_go = 6;
inline constexpr int legacy_wlan = 7;
inline constexpr int p2p_client = 8;

} // namespace test_case

} // namespace wivex

// SPDX-License-Identifier: Apache-2.0
// The modes of the tool. What differs between them for a reader stands in one row.
#pragma once

#include "model/causes.hpp"
#include "model/phases.hpp"

#include <cstdint>
#include <span>
#include <string_view>

namespace wivex::report {

enum class Mode : std::uint8_t { unknown, legacy, device, go, client, scan, softap, checks };

/// What shows that an iteration of a mode passed, besides its checks.
enum class PassShown : std::uint8_t {
    by_end,           ///< the tool went on behind it
    by_mode,          ///< the mode's own lines
    by_mode_and_end,  ///< both
    until_interrupted ///< the mode's own lines, and somebody ended it: it has no other end
};

struct ModeRow {
    Mode mode;
    /// The tool's option letter; 0 when no option chooses it.
    char letter;
    /// The short name in run.json and junit.xml.
    std::string_view name;
    /// As a reader calls it; also what its test case examines.
    std::string_view title;
    /// The test case of the result file; 0 when it has none.
    int test_case;
    PassShown pass_shown;
    /// In their usual order, behind the checks.
    std::span<const Phase> phases;
    /// The causes that the tool records under this test case; one that stands here twice counts
    /// twice.
    std::span<const Cause> records;
};

std::span<const ModeRow> mode_rows();

const ModeRow& row_of(Mode mode);

/// The short name in run.json and junit.xml.
std::string_view name_of(Mode mode);

/// The mode as a reader calls it, for example "legacy WLAN".
std::string_view title_of(Mode mode);

/// The mode that the tool's option letter chooses; `Mode::unknown` for any other letter.
Mode mode_of_option(char letter);

/// The phase that usually follows `phase` in an iteration of `mode`; `Phase::none` at its end.
Phase phase_after(Mode mode, Phase phase);

/// The test case number of a mode, 0 when it has none.
int test_case_of(Mode mode);

/// The test case under which the tool counts `cause` in `mode`; 0: under none.
int test_case_of(Cause cause, Mode mode);

/// How many failures one occurrence of `cause` adds to that test case.
unsigned records_of(Cause cause, Mode mode);

} // namespace wivex::report

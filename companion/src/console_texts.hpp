// SPDX-License-Identifier: Apache-2.0
// The texts of the tool's console and what each of them means. The one place to change when the
// tool learns a new line.
#pragma once

#include "causes.hpp"
#include "phases.hpp"

#include <cstdint>
#include <span>
#include <string_view>

namespace wivex::report {

/// Stands before most lines of the tool.
constexpr std::string_view tool_prefix = "[WIFI]";

/// How a text stands in its line.
enum class Shape : std::uint8_t {
    whole,  ///< the text is the line
    begins, ///< something variable follows
    open,   ///< the tool writes no newline behind it: another text may follow in the same line
    ends,   ///< something variable stands before it
    inside, ///< something variable on both sides
};

/// What a text tells about the run.
enum class Sign : std::uint8_t {
    known, ///< nothing, but it is the tool's own
    enter, ///< the phase is under way
    pass,  ///< the phase passed
    warn,  ///< the phase did not do what it should, and the test goes on
    fail,  ///< the phase failed with the cause

    // The remaining ones say more than a phase and a verdict.
    run_begins,
    starting, ///< said before the first iteration
    not_started,
    config_path,
    unknown_key,
    single_iteration,
    chip_type,
    chip_ids,
    module_hint,
    session_trouble,
    connection_closed,
    peer_found,
    own_address,
    role_owner,
    role_client,
    group_removed,
    mode_passed,
    iperf_done,
    group_started,
    client_connected,
    mac_kernel,
    mac_chip,
    mac_pair,
    loopback_status,
    access_point_count,
    prefix,
    match_count,
    softap_end,
    interrupted,
    after_interrupt,
    killed,
    result_path,
    result_written,
    result_unwritable,
    results_lost,
    run_over,
    cleaned_up,
    done,
};

struct TextRow {
    Shape shape;
    std::string_view text;
    Sign sign = Sign::known;
    Phase phase = Phase::none;
    Cause cause = Cause::none;
    /// The mode that alone prints this text; `Mode::unknown` when several do.
    Mode mode = Mode::unknown;
};

std::span<const TextRow> console_texts();

/// Told on standard error: shows that the console carries it.
bool told_on_standard_error(const TextRow& row);

/// Whether only the tool prints it, so that it shows a run even where none was seen to begin.
bool is_unmistakable(const TextRow& row);

} // namespace wivex::report

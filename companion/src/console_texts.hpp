// The texts of the tool's console and what each of them means. The one place to change when the
// tool learns a new line.
#pragma once

#include "causes.hpp"
#include "phases.hpp"

#include <cstdint>
#include <span>
#include <string_view>

namespace wivex::report {

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
    not_started,
    config_path,
    unknown_key,
    single_iteration,
    chip_type,
    chip_ids,
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
    access_point_count,
    prefix,
    match_count,
    softap_end,
    interrupted,
    killed,
    result_path,
    result_written,
    result_unwritable,
    run_over,
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

} // namespace wivex::report

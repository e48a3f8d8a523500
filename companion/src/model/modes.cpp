// SPDX-License-Identifier: Apache-2.0
#include "model/modes.hpp"

#include "common/enum_rows.hpp"

#include <algorithm>
#include <array>

namespace wivex::report {

namespace {

constexpr std::array legacy_phases{Phase::scan, Phase::associate, Phase::dhcp, Phase::traffic,
                                   Phase::disconnect};
// The tool's own list names the code of a session twice. Without an address the mode goes on, and
// counts nothing.
constexpr std::array legacy_records{
    Cause::session_not_open,     Cause::session_not_open,  Cause::session_lost,
    Cause::session_lost,         Cause::scan_busy,         Cause::scan_rejected,
    Cause::network_not_found,    Cause::network_not_added, Cause::network_not_set,
    Cause::network_not_selected, Cause::iperf_client,      Cause::network_not_disabled};

constexpr std::array device_phases{Phase::session, Phase::find, Phase::negotiate, Phase::group,
                                   Phase::removal};
constexpr std::array device_records{
    Cause::session_not_open, Cause::peer_not_found, Cause::not_connected,   Cause::address_not_set,
    Cause::dhcp_server,      Cause::dhcp_client,    Cause::no_group_started};

constexpr std::array go_phases{Phase::session, Phase::group, Phase::serve};
constexpr std::array go_records{Cause::session_not_open};

constexpr std::array client_phases{Phase::session, Phase::find,    Phase::negotiate,
                                   Phase::dhcp,    Phase::traffic, Phase::removal};
constexpr std::array client_records{Cause::session_not_open, Cause::peer_not_found,
                                    Cause::not_connected,    Cause::dhcp_client,
                                    Cause::iperf_client,     Cause::group_not_removed};

constexpr std::array scan_phases{Phase::scan};

constexpr auto by_end = PassShown::by_end;

// Columns: mode, letter, name, title, test case, what shows a pass, phases, records.
constexpr auto rows = std::to_array<ModeRow>({
    {Mode::unknown, 0, "unknown", "unknown mode", 0, by_end, {}, {}},
    {Mode::legacy, 'w', "legacy-wlan", "legacy WLAN", 8, PassShown::by_mode, legacy_phases,
     legacy_records},
    {Mode::device, 'd', "p2p-device", "P2P device", 6, PassShown::by_mode_and_end, device_phases,
     device_records},
    {Mode::go, 'g', "p2p-go", "autonomous GO", 7, PassShown::until_interrupted, go_phases,
     go_records},
    {Mode::client, 'c', "p2p-client", "P2P client", 9, PassShown::by_mode_and_end, client_phases,
     client_records},
    {Mode::scan, 'S', "scan", "scan", 5, PassShown::by_mode, scan_phases, {}},
    {Mode::softap, 'A', "softap", "softAP", 0, by_end, {}, {}},
    {Mode::checks, 0, "checks", "checks only", 0, by_end, {}, {}},
});

consteval bool rows_stand_in_order() {
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (static_cast<std::size_t>(rows[i].mode) != i) {
            return false;
        }
    }
    return true;
}
static_assert(rows_stand_in_order());

} // namespace

std::span<const ModeRow> mode_rows() {
    return rows;
}

const ModeRow& row_of(Mode mode) {
    return row_at(rows, mode);
}

std::string_view name_of(Mode mode) {
    return row_of(mode).name;
}

std::string_view title_of(Mode mode) {
    return row_of(mode).title;
}

Mode mode_of_option(char letter) {
    const auto* const found = std::ranges::find(rows, letter, &ModeRow::letter);
    return letter == 0 || found == rows.end() ? Mode::unknown : found->mode;
}

Phase phase_after(Mode mode, Phase phase) {
    const std::span<const Phase> order = row_of(mode).phases;
    const auto found = std::ranges::find(order, phase);
    if (found == order.end()) {
        return phase == Phase::module ? Phase::driver : order.empty() ? Phase::none : order.front();
    }
    const auto next = found + 1;
    return next == order.end() ? Phase::none : *next;
}

int test_case_of(Mode mode) {
    return row_of(mode).test_case;
}

int test_case_of(Cause cause, Mode mode) {
    const int check = row_of(cause).test_case;
    if (check != 0) {
        return check;
    }
    return records_of(cause, mode) == 0 ? 0 : test_case_of(mode);
}

unsigned records_of(Cause cause, Mode mode) {
    if (row_of(cause).test_case != 0) {
        return 1;
    }
    return static_cast<unsigned>(std::ranges::count(row_of(mode).records, cause));
}

} // namespace wivex::report

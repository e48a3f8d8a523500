// SPDX-License-Identifier: Apache-2.0
// What lies behind a failure: other programs' lines tell more than the tool's own. Events of the
// supplicant stand on the console when the tool runs with -u, those of its children always.
#pragma once

#include "model/causes.hpp"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace wivex::report {

/// In the order of weight: of several in an iteration the last one listed here holds.
enum class SubCause : std::uint8_t {
    none,
    no_lease,
    dhcp_client_missing,
    no_traffic_server,
    iperf_missing,
    negotiation_failed,
    access_point_absent,
    association_refused,
    authentication_refused,
    wrong_key,
};

constexpr std::size_t sub_cause_count = static_cast<std::size_t>(SubCause::wrong_key) + 1;

/// The short name in run.json.
std::string_view id_of(SubCause sub_cause);

/// In words, for a reader.
std::string_view words_of(SubCause sub_cause);

/// Whether `sub_cause` can be what lies behind `cause`.
bool explains(SubCause sub_cause, Cause cause);

} // namespace wivex::report

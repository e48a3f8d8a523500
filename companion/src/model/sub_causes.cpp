// SPDX-License-Identifier: Apache-2.0
#include "model/sub_causes.hpp"

#include "common/enum_rows.hpp"

#include <array>

namespace wivex::report {

namespace {

struct SubCauseRow {
    SubCause sub_cause;
    std::string_view id;
    std::string_view words;
    Cause behind;
    Cause also_behind;
};

constexpr std::array<SubCauseRow, sub_cause_count> rows{{
    {SubCause::none, "none", "", Cause::none, Cause::none},
    {SubCause::no_lease, "no-lease", "no DHCP server gave an address", Cause::dhcp_client,
     Cause::none},
    {SubCause::dhcp_client_missing, "dhcp-client-missing", "udhcpc is not installed",
     Cause::dhcp_client, Cause::none},
    {SubCause::no_traffic_server, "no-traffic-server", "iperf found no server",
     Cause::no_traffic_figure, Cause::none},
    {SubCause::iperf_missing, "iperf-missing", "iperf is not installed", Cause::no_traffic_figure,
     Cause::none},
    {SubCause::negotiation_failed, "negotiation-failed", "the negotiation with the peer failed",
     Cause::no_group_started, Cause::not_connected},
    {SubCause::access_point_absent, "access-point-absent", "the access point is not heard",
     Cause::network_not_selected, Cause::not_connected},
    {SubCause::association_refused, "association-refused",
     "the access point refused the association", Cause::network_not_selected, Cause::not_connected},
    {SubCause::authentication_refused, "authentication-refused",
     "the access point refused the authentication", Cause::network_not_selected,
     Cause::not_connected},
    {SubCause::wrong_key, "wrong-key", "wrong pass phrase", Cause::network_not_selected,
     Cause::not_connected},
}};

} // namespace

std::string_view id_of(SubCause sub_cause) {
    return row_at(rows, sub_cause).id;
}

std::string_view words_of(SubCause sub_cause) {
    return row_at(rows, sub_cause).words;
}

bool explains(SubCause sub_cause, Cause cause) {
    const SubCauseRow& row = row_at(rows, sub_cause);
    return cause != Cause::none && (row.behind == cause || row.also_behind == cause);
}

} // namespace wivex::report

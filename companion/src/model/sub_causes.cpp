// SPDX-License-Identifier: Apache-2.0
#include "model/sub_causes.hpp"

#include <algorithm>
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

struct Hint {
    std::string_view text;
    SubCause sub_cause;
};

// Behind the priority of an event.
constexpr std::array<Hint, 8> event_hints{{
    {"CTRL-EVENT-NETWORK-NOT-FOUND", SubCause::access_point_absent},
    {"CTRL-EVENT-ASSOC-REJECT", SubCause::association_refused},
    {"CTRL-EVENT-AUTH-REJECT", SubCause::authentication_refused},
    {"CTRL-EVENT-EAP-FAILURE", SubCause::authentication_refused},
    {"WPA: 4-Way Handshake failed", SubCause::wrong_key},
    {"P2P-GO-NEG-FAILURE", SubCause::negotiation_failed},
    {"P2P-GROUP-FORMATION-FAILURE", SubCause::negotiation_failed},
    {"P2P-PROV-DISC-FAILURE", SubCause::negotiation_failed},
}};

// At the start of a line of a child.
constexpr std::array<Hint, 4> child_hints{{
    {"udhcpc: no lease", SubCause::no_lease},
    {"No lease, failing", SubCause::no_lease},
    {"connect failed: ", SubCause::no_traffic_server},
    {"tcp connect failed: ", SubCause::no_traffic_server},
}};

SubCause hint_in(std::string_view text, auto&& hints) {
    const auto found =
        std::ranges::find_if(hints, [&](const Hint& hint) { return text.starts_with(hint.text); });
    return found == hints.end() ? SubCause::none : found->sub_cause;
}

SubCause read_event(std::string_view event) {
    // The names of networks stand between; the reason is the last word.
    if (event.starts_with("CTRL-EVENT-SSID-TEMP-DISABLED ") &&
        event.ends_with(" reason=WRONG_KEY")) {
        return SubCause::wrong_key;
    }
    return hint_in(event, event_hints);
}

} // namespace

std::string_view id_of(SubCause sub_cause) {
    return rows.at(static_cast<std::size_t>(sub_cause)).id;
}

std::string_view words_of(SubCause sub_cause) {
    return rows.at(static_cast<std::size_t>(sub_cause)).words;
}

bool explains(SubCause sub_cause, Cause cause) {
    const SubCauseRow& row = rows.at(static_cast<std::size_t>(sub_cause));
    return cause != Cause::none && (row.behind == cause || row.also_behind == cause);
}

SubCause read_sub_cause(std::string_view line) {
    constexpr std::size_t priority = 3;
    if (line.size() > priority && line[0] == '<' && line[2] == '>') {
        return read_event(line.substr(priority));
    }
    if (line.ends_with(": not found") && line.find("udhcpc") != std::string_view::npos) {
        return SubCause::dhcp_client_missing;
    }
    if (line.ends_with(": not found") && line.find("iperf") != std::string_view::npos) {
        return SubCause::iperf_missing;
    }
    return hint_in(line, child_hints);
}

} // namespace wivex::report

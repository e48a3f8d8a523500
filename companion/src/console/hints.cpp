// SPDX-License-Identifier: Apache-2.0
#include "console/hints.hpp"

#include <algorithm>
#include <array>

namespace wivex::report {

namespace {

struct Hint {
    std::string_view text;
    SubCause sub_cause;
};

// Stands behind the priority of an event.
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

// "<3>" stands before an event.
constexpr std::size_t priority_length = 3;

bool is_event(std::string_view line) {
    return line.size() > priority_length && line[0] == '<' && line[2] == '>';
}

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

SubCause read_sub_cause(std::string_view line) {
    if (is_event(line)) {
        return read_event(line.substr(priority_length));
    }
    if (line.ends_with(": not found") && line.find("udhcpc") != std::string_view::npos) {
        return SubCause::dhcp_client_missing;
    }
    if (line.ends_with(": not found") && line.find("iperf") != std::string_view::npos) {
        return SubCause::iperf_missing;
    }
    return hint_in(line, child_hints);
}

std::string_view read_connection(std::string_view line) {
    constexpr std::string_view event = "CTRL-EVENT-CONNECTED - Connection to ";
    constexpr std::size_t bssid_length = 17;
    if (!is_event(line) || !line.substr(priority_length).starts_with(event)) {
        return {};
    }
    const std::string_view bssid = line.substr(priority_length + event.size());
    return bssid.find(' ') == bssid_length ? bssid.substr(0, bssid_length) : std::string_view();
}

} // namespace wivex::report

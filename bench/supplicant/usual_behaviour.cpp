// SPDX-License-Identifier: Apache-2.0
#include "supplicant/usual_behaviour.hpp"

#include <array>
#include <cstdlib>
#include <utility>

namespace bench {

namespace {

constexpr const char* bssid = "02:00:00:00:01:00";
constexpr const char* own_address = "02:00:00:00:00:aa";
constexpr int scan_ms = 20;
constexpr int association_ms = 20;
constexpr int negotiation_ms = 30;

Behaviour ok(std::vector<PlannedEvent> events = {}, std::optional<GroupRole> group = {}) {
    return {"OK\n", std::move(events), group};
}

std::string listing(const Neighbourhood& around) {
    std::string text = "bssid / frequency / signal level / flags / ssid\n";
    text += "02:00:00:00:02:00\t2462\t-71\t[WPA2-EAP-CCMP][ESS]\toffice\n";
    text += std::string(bssid) + "\t2412\t-38\t[WPA2-PSK-CCMP][ESS]\t" + around.ssid + "\n";
    text += "02:00:00:00:03:00\t2437\t-80\t[ESS]\tguests\n";
    return text;
}

std::string status(const Neighbourhood& around) {
    return "bssid=" + std::string(bssid) + "\nssid=" + around.ssid +
           "\nmode=station\nwpa_state=DISCONNECTED\np2p_device_address=" + own_address + "\n";
}

PlannedEvent connected(int delay_ms) {
    return {"<3>CTRL-EVENT-CONNECTED - Connection to " + std::string(bssid) +
                " completed [id=0 id_str=]",
            delay_ms};
}

PlannedEvent group_started(const Neighbourhood& around, const char* role, int delay_ms) {
    return {"<3>P2P-GROUP-STARTED " + around.interface + " " + role, delay_ms};
}

// An owner tells its own address, a client that of the owner and that it stores the group.
PlannedEvent owner_started(const Neighbourhood& around, int delay_ms) {
    PlannedEvent event = group_started(around, "GO", delay_ms);
    event.text += R"( ssid="DIRECT-wx" freq=2412 passphrase="Hk3nPq7v" go_dev_addr=)";
    event.text += own_address;
    return event;
}

PlannedEvent client_started(const Neighbourhood& around, int delay_ms) {
    PlannedEvent event = group_started(around, "client", delay_ms);
    event.text += " ssid=\"DIRECT-wx\" freq=2412 psk=" + std::string(64, 'a') +
                  " go_dev_addr=" + around.peer + " [PERSISTENT]";
    return event;
}

PlannedEvent group_removed(const Neighbourhood& around, const char* role_and_reason, int delay_ms) {
    return {"<3>P2P-GROUP-REMOVED " + around.interface + " " + role_and_reason, delay_ms};
}

// A client first associates for the exchange of keys alone, which ends like a failure.
std::vector<PlannedEvent> join_group(const Neighbourhood& around) {
    return {{"<3>CTRL-EVENT-EAP-FAILURE EAP authentication failed", negotiation_ms},
            {"<3>CTRL-EVENT-DISCONNECTED bssid=" + around.peer + " reason=3 locally_generated=1",
             negotiation_ms},
            connected(negotiation_ms),
            client_started(around, negotiation_ms)};
}

Behaviour scan(const Neighbourhood& /*around*/, std::string_view /*command*/) {
    return ok({{"<3>CTRL-EVENT-SCAN-STARTED ", 0}, {"<3>CTRL-EVENT-SCAN-RESULTS ", scan_ms}});
}

Behaviour scan_results(const Neighbourhood& around, std::string_view /*command*/) {
    return {listing(around), {}};
}

Behaviour select_network(const Neighbourhood& around, std::string_view /*command*/) {
    return ok({{"<3>SME: Trying to authenticate with " + std::string(bssid) + " (SSID='" +
                    around.ssid + "' freq=2412 MHz)",
                0},
               connected(association_ms)});
}

Behaviour disable_network(const Neighbourhood& /*around*/, std::string_view /*command*/) {
    return ok({{"<3>CTRL-EVENT-DISCONNECTED bssid=" + std::string(bssid) +
                    " reason=3 locally_generated=1",
                association_ms}});
}

Behaviour p2p_find(const Neighbourhood& around, std::string_view /*command*/) {
    return ok({{"<3>P2P-DEVICE-FOUND " + around.peer + " p2p_dev_addr=" + around.peer +
                    " pri_dev_type=1-0050F204-1 name='peer' config_methods=0x188 "
                    "dev_capab=0x25 group_capab=0x0 new=1",
                scan_ms}});
}

// A join makes this device the client. In a negotiation the higher intent owns the group; the peer
// offers 7, and ends the group itself when it is the owner.
Behaviour p2p_connect(const Neighbourhood& around, std::string_view command) {
    if (command.find(" join") != std::string_view::npos) {
        return ok(join_group(around), GroupRole::client);
    }
    const std::size_t intent = command.find("go_intent=");
    const bool owner = intent != std::string_view::npos &&
                       std::atoi(std::string(command.substr(intent + 10)).c_str()) > 7;
    if (owner) {
        return ok({owner_started(around, negotiation_ms)}, GroupRole::owner);
    }
    std::vector<PlannedEvent> events = join_group(around);
    events.push_back(group_removed(around, "client reason=GO_ENDING_SESSION", 1500));
    return ok(std::move(events), GroupRole::none);
}

Behaviour p2p_group_add(const Neighbourhood& around, std::string_view /*command*/) {
    return ok({owner_started(around, negotiation_ms)}, GroupRole::owner);
}

Behaviour p2p_group_remove(const Neighbourhood& around, std::string_view /*command*/) {
    if (around.group == GroupRole::none) {
        return {"FAIL\n", {}};
    }
    const char* const end =
        around.group == GroupRole::owner ? "GO reason=REQUESTED" : "client reason=REQUESTED";
    return ok({group_removed(around, end, association_ms)}, GroupRole::none);
}

Behaviour wps_pbc(const Neighbourhood& around, std::string_view /*command*/) {
    return ok(
        {{"<3>AP-STA-CONNECTED " + around.peer + " p2p_dev_addr=" + around.peer, association_ms}});
}

Behaviour status_of_interface(const Neighbourhood& around, std::string_view /*command*/) {
    return {status(around), {}};
}

Behaviour first_id(const Neighbourhood& /*around*/, std::string_view /*command*/) {
    return {"0\n", {}};
}

Behaviour pong(const Neighbourhood& /*around*/, std::string_view /*command*/) {
    return {"PONG\n", {}};
}

// Settings as the README tells to set them up.
Behaviour setting(const Neighbourhood& /*around*/, std::string_view command) {
    return {command == "GET p2p_no_group_iface" ? "1\n" : "FAIL\n", {}};
}

Behaviour plain_ok(const Neighbourhood& /*around*/, std::string_view /*command*/) {
    return ok();
}

struct Known {
    std::string_view name;
    Behaviour (*behave)(const Neighbourhood& around, std::string_view command);
};

constexpr std::array<Known, 19> known_commands{{{"PING", pong},
                                                {"GET", setting},
                                                {"STATUS", status_of_interface},
                                                {"SCAN", scan},
                                                {"SCAN_RESULTS", scan_results},
                                                {"REMOVE_NETWORK", plain_ok},
                                                {"ADD_NETWORK", first_id},
                                                {"SET_NETWORK", plain_ok},
                                                {"SELECT_NETWORK", select_network},
                                                {"DISABLE_NETWORK", disable_network},
                                                {"P2P_FLUSH", plain_ok},
                                                {"P2P_FIND", p2p_find},
                                                {"P2P_STOP_FIND", plain_ok},
                                                {"P2P_LISTEN", plain_ok},
                                                {"P2P_CONNECT", p2p_connect},
                                                {"P2P_GROUP_ADD", p2p_group_add},
                                                {"P2P_GROUP_REMOVE", p2p_group_remove},
                                                {"WPS_PBC", wps_pbc},
                                                {"DISCONNECT", plain_ok}}};

} // namespace

Behaviour usual_behaviour(std::string_view command, const Neighbourhood& around) {
    const std::string_view name = command.substr(0, command.find(' '));
    for (const Known& known : known_commands) {
        if (known.name == name) {
            return known.behave(around, command);
        }
    }
    return {"UNKNOWN COMMAND\n", {}};
}

} // namespace bench

#include "behaviour.hpp"

#include <array>
#include <cstdlib>

namespace bench {

namespace {

constexpr const char* bssid = "02:00:00:00:01:00";
constexpr int scan_ms = 20;
constexpr int association_ms = 20;
constexpr int negotiation_ms = 30;

Behaviour ok(std::vector<PlannedEvent> events = {}) {
    return {"OK\n", std::move(events)};
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
           "\nmode=station\nwpa_state=DISCONNECTED\np2p_device_address=02:00:00:00:00:aa\n";
}

PlannedEvent connected(int delay_ms) {
    return {"<3>CTRL-EVENT-CONNECTED - Connection to " + std::string(bssid) +
                " completed [id=0 id_str=]",
            delay_ms};
}

PlannedEvent group_started(const Neighbourhood& around, const char* role, int delay_ms) {
    return {"<3>P2P-GROUP-STARTED " + around.interface + " " + role + " ssid=\"DIRECT-wx\" " +
                "freq=2412 go_dev_addr=" + around.peer,
            delay_ms};
}

PlannedEvent group_removed(const Neighbourhood& around, int delay_ms) {
    return {"<3>P2P-GROUP-REMOVED " + around.interface + " client reason=REQUESTED", delay_ms};
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
                    " pri_dev_type=1-0050F204-1 name='peer' config_methods=0x188",
                scan_ms}});
}

// A join makes this device the client. In a negotiation the higher intent owns the group; the peer
// offers 7, and ends the group itself when it is the owner.
Behaviour p2p_connect(const Neighbourhood& around, std::string_view command) {
    if (command.find(" join") != std::string_view::npos) {
        return ok({connected(negotiation_ms), group_started(around, "client", negotiation_ms)});
    }
    const std::size_t intent = command.find("go_intent=");
    const bool owner = intent != std::string_view::npos &&
                       std::atoi(std::string(command.substr(intent + 10)).c_str()) > 7;
    if (owner) {
        return ok({group_started(around, "GO", negotiation_ms)});
    }
    return ok({connected(negotiation_ms), group_started(around, "client", negotiation_ms),
               group_removed(around, 1500)});
}

Behaviour p2p_group_add(const Neighbourhood& around, std::string_view /*command*/) {
    return ok({group_started(around, "GO", negotiation_ms)});
}

Behaviour p2p_group_remove(const Neighbourhood& around, std::string_view /*command*/) {
    return ok({group_removed(around, association_ms)});
}

Behaviour wps_pbc(const Neighbourhood& around, std::string_view /*command*/) {
    return ok({{"<3>AP-STA-CONNECTED " + around.peer, association_ms}});
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

Behaviour plain_ok(const Neighbourhood& /*around*/, std::string_view /*command*/) {
    return ok();
}

struct Known {
    std::string_view name;
    Behaviour (*behave)(const Neighbourhood& around, std::string_view command);
};

constexpr std::array<Known, 18> known_commands{{{"PING", pong},
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

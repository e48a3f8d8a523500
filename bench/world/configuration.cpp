// SPDX-License-Identifier: Apache-2.0
#include "world/configuration.hpp"

#include <algorithm>

namespace bench {

Configuration usual_configuration() {
    return {{"device_type", "USB"},
            {"vendor_id", "BRCM"},
            {"wifidev", "/sys/class/net"},
            {"interface_name", "wlan0"},
            {"ctrl_iface", "/tmp/wpa_supplicant"},
            {"go_ssid", "bench-ap"},
            {"go_passphrase", "bench-pass-phrase"},
            {"p2p_target_device_mac", "02:00:00:00:00:01"},
            {"starting_go_intent", "0"},
            {"p2p_iface_ip", access_point_address},
            {"dhcpd_conf", "/tmp/udhcpd.conf"},
            {"check_iperf", "no"},
            {"check_ping", "no"},
            {"driver_path", "/tmp"},
            {"loopback_pkt_cnt", "100"},
            {"loopback_pkt_size", "1024"}};
}

void take_values(std::string_view text, Configuration& configuration) {
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        const std::size_t equals = line.find('=');
        if (equals != std::string_view::npos && !line.starts_with('#') && !line.starts_with("//")) {
            configuration[std::string(line.substr(0, equals))] = line.substr(equals + 1);
        }
    }
}

void apply(const Scenario& scenario, Configuration& configuration) {
    for (const auto& [key, value] : scenario.config) {
        if (value) {
            configuration[key] = *value;
        } else {
            configuration.erase(key);
        }
    }
}

std::string to_text(const Configuration& configuration) {
    std::string text;
    for (const auto& [key, value] : configuration) {
        text += key;
        text += '=';
        text += value;
        text += '\n';
    }
    return text;
}

} // namespace bench

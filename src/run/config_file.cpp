// SPDX-License-Identifier: Apache-2.0
#include "run/config_file.hpp"

#include "common/console.hpp"
#include "common/files.hpp"
#include "common/process_state.hpp"
#include "run/chip_tables.hpp"

#include <fcntl.h>

#include <algorithm>
#include <array>
#include <cstring>

namespace wivex {

namespace {

// The numbers are fixed; 2 belongs to no key.
constexpr std::array<ConfigKey, 38> config_keys{{
    {"device_type", 0, &RunConfig::device_type},
    {"vendor_id", 1, &RunConfig::vendor_id},
    {"wifidev", 3, &RunConfig::wifidev},
    {"modulelist", 4, &RunConfig::modulelist},
    {"ctrl_iface", 5, &RunConfig::ctrl_iface},
    {"ctrl_interface_group", 6, &RunConfig::ctrl_interface_group},
    {"interface_name", 7, &RunConfig::interface_name},
    {"usbdevlist", 8, &RunConfig::usbdevlist},
    {"go_ssid", 9, &RunConfig::go_ssid},
    {"starting_go_intent", 10, &RunConfig::starting_go_intent},
    {"device_name", 11, &RunConfig::device_name},
    {"p2p_target_device_mac", 12, &RunConfig::p2p_target_device_mac},
    // Both channels share one field, and the later line wins: kept.
    {"p2p_oper_chan", 13, &RunConfig::p2p_channel},
    {"p2p_listen_chan", 14, &RunConfig::p2p_channel},
    {"go_passphrase", 15, &RunConfig::go_passphrase},
    {"p2p_iface_ip", 16, &RunConfig::p2p_iface_ip},
    {"dhcpd_path", 17, &RunConfig::dhcpd_path},
    {"dhcpd_conf", 18, &RunConfig::dhcpd_conf},
    {"start_ip_range", 19, &RunConfig::start_ip_range},
    {"end_ip_range", 20, &RunConfig::end_ip_range},
    {"iperf_path", 21, &RunConfig::iperf_path},
    {"check_iperf", 22, &RunConfig::check_iperf},
    {"check_ping", 23, &RunConfig::check_ping},
    {"driver_path", 24, &RunConfig::driver_path},
    {"firmware_path", 25, &RunConfig::firmware_path},
    {"nvrams_path", 26, &RunConfig::nvrams_path},
    {"max_transfer", 27, &RunConfig::max_transfer},
    {"ssid", 28, &RunConfig::ssid},
    {"psk", 29, &RunConfig::psk},
    {"key_mgmt", 30, &RunConfig::key_mgmt},
    {"pairwise", 31, &RunConfig::pairwise},
    {"frequency", 32, &RunConfig::frequency},
    {"txpower", 33, &RunConfig::txpower},
    {"conf_file_path", 34, &RunConfig::conf_file_path},
    {"conf_file_name", 35, &RunConfig::conf_file_name},
    {"interface_ip", 36, &RunConfig::interface_ip},
    {"loopback_pkt_cnt", 37, &RunConfig::loopback_pkt_cnt},
    {"loopback_pkt_size", 38, &RunConfig::loopback_pkt_size},
}};

const ConfigKey* find_key(std::string_view name) {
    const auto* const key =
        std::find_if(config_keys.begin(), config_keys.end(),
                     [name](const ConfigKey& known) { return known.name == name; });
    return key == config_keys.end() ? nullptr : key;
}

void end_at_zero_byte(std::string& text) {
    text.resize(std::strlen(text.c_str()));
}

bool is_comment(std::string_view line) {
    return line.starts_with('#') || line.starts_with("//");
}

void store(const std::string& name, const std::string& value, RunConfig& config) {
    const ConfigKey* const key = find_key(name);
    if (key == nullptr) {
        print_err("[WIFI]Unknown key value pair..\nskipping key = %s value = %s\n", name.c_str(),
                  value.c_str());
        return;
    }
    config.*(key->field) = value;
    if (key->field == &RunConfig::interface_name) {
        config.interface_name_copy = value;
    }
}

void take_line(const std::string& line, RunConfig& config) {
    if (const std::size_t value = find_config_value(line)) {
        store(line.substr(0, value - 1), line.substr(value), config);
    }
}

void choose_device_list(RunConfig& config) {
    if (config.device_type == "USB") {
        config.usbdevlist = "/proc/bus/usb/devices";
    } else if (config.device_type == "PCIE") {
        config.usbdevlist = "/proc/bus/pci/devices";
    }
}

void fill_chip_ids(RunConfig& config) {
    if (config.vendor_id.empty() || config.device_type.empty()) {
        return;
    }
    VendorId vendor_id{};
    if (push_chip_ids(device_type_code(config.device_type), vendor_code(config.vendor_id),
                      &vendor_id, config.product_ids) == 0) {
        return;
    }
    config.vendor_id = vendor_id.data();
    if (run_options.debug != 0) {
        print_out("[WIFI]pid array size \n%zu\n", config.product_ids.size());
    }
}

} // namespace

std::span<const ConfigKey> config_key_table() {
    return config_keys;
}

bool read_config_line(FileReader& file, ConfigLine& line) {
    line.text.clear();
    line.cut = false;
    int next = file.get();
    if (next < 0) {
        return false;
    }
    for (; next >= 0 && next != '\n'; next = file.get()) {
        if (line.text.size() < longest_config_line) {
            line.text.push_back(static_cast<char>(next));
        } else {
            line.cut = true;
        }
    }
    end_at_zero_byte(line.text);
    return true;
}

std::size_t find_config_value(std::string_view line) {
    const std::size_t equals = is_comment(line) ? std::string_view::npos : line.find('=');
    return equals == std::string_view::npos ? 0 : equals + 1;
}

int lookup_config_key(std::string_view key) {
    const ConfigKey* const found = find_key(key);
    return found == nullptr ? unknown_config_key : found->number;
}

int read_config_file(const std::string& path, RunConfig& config) {
    print_out("[WIFI]Reading Conf file: %s\n", path.c_str());
    FileReader file(open_file(path.c_str(), O_RDONLY));
    if (!file) {
        print_out("[WIFI]Reading Conf file: %s Failed\n", path.c_str());
        return 0;
    }
    ConfigLine line;
    for (int number = 1; read_config_line(file, line); ++number) {
        if (line.cut) {
            print_err("[WIFI]%s:%d: line is longer than %zu characters, the rest is skipped\n",
                      path.c_str(), number, longest_config_line);
        }
        take_line(line.text, config);
    }
    if (file.error() != 0) {
        print_out("[WIFI]Reading Conf file: %s Failed\n", path.c_str());
        return 0;
    }
    choose_device_list(config);
    fill_chip_ids(config);
    return 1;
}

} // namespace wivex

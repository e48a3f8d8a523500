// SPDX-License-Identifier: Apache-2.0
// The settings of a run, as the configuration file gives them.
//
// Every field is the text behind the key of the same name, taken as it stands, and empty unless the
// file sets it. Whoever uses a number converts it.
#pragma once

#include <string>
#include <vector>

namespace wivex {

struct RunConfig {
    std::string device_type;
    /// Vendor name in the file; becomes the four-digit vendor id when the chip tables know it.
    std::string vendor_id;
    /// Set by the module check: product id of the module found.
    std::string product_id;
    /// Candidate product ids of the vendor, from the chip tables.
    std::vector<std::string> product_ids;
    std::string wifidev;
    std::string interface_name;
    std::string modulelist;
    std::string usbdevlist;
    std::string ctrl_iface;
    std::string ctrl_interface_group;
    std::string device_name;
    std::string p2p_target_device_mac;
    std::string go_ssid;
    std::string starting_go_intent;
    std::string go_passphrase;
    /// Both channel keys write this field; the later line of the file wins.
    std::string p2p_channel;
    std::string p2p_iface_ip;
    std::string ssid;
    std::string psk;
    std::string key_mgmt;
    std::string pairwise;
    std::string frequency;
    std::string txpower;
    std::string interface_ip;
    std::string interface_name_copy;
    std::string conf_file_path;
    std::string conf_file_name;
    std::string dhcpd_path;
    std::string dhcpd_conf;
    std::string start_ip_range;
    std::string end_ip_range;
    std::string iperf_path;
    // Security of the access point, taken from its line of the scan listing.
    std::string scan_proto;
    std::string scan_key_mgmt;
    std::string scan_pairwise;
    std::string check_iperf;
    std::string check_ping;
    std::string driver_path;
    std::string firmware_path;
    std::string nvrams_path;
    std::string max_transfer;
    std::string loopback_pkt_cnt;
    std::string loopback_pkt_size;
};

} // namespace wivex

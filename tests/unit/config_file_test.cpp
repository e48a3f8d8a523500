// SPDX-License-Identifier: Apache-2.0
#include "common/process_state.hpp"
#include "process_fixture.hpp"
#include "run/config_file.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace wivex {
namespace {

using namespace test_support;
using namespace testing;

struct KeyNumber {
    const char* key;
    int number;
};

TEST(ConfigKeys, have_their_numbers) {
    for (const auto& [key, number] : std::vector<KeyNumber>{
             {"device_type", 0},
             {"vendor_id", 1},
             {"wifidev", 3},
             {"modulelist", 4},
             {"ctrl_iface", 5},
             {"ctrl_interface_group", 6},
             {"interface_name", 7},
             {"usbdevlist", 8},
             {"go_ssid", 9},
             {"starting_go_intent", 10},
             {"device_name", 11},
             {"p2p_target_device_mac", 12},
             {"p2p_oper_chan", 13},
             {"p2p_listen_chan", 14},
             {"go_passphrase", 15},
             {"p2p_iface_ip", 16},
             {"dhcpd_path", 17},
             {"dhcpd_conf", 18},
             {"start_ip_range", 19},
             {"end_ip_range", 20},
             {"iperf_path", 21},
             {"check_iperf", 22},
             {"check_ping", 23},
             {"driver_path", 24},
             {"firmware_path", 25},
             {"nvrams_path", 26},
             {"max_transfer", 27},
             {"ssid", 28},
             {"psk", 29},
             {"key_mgmt", 30},
             {"pairwise", 31},
             {"frequency", 32},
             {"txpower", 33},
             {"conf_file_path", 34},
             {"conf_file_name", 35},
             {"interface_ip", 36},
             {"loopback_pkt_cnt", 37},
             {"loopback_pkt_size", 38},
         }) {
        EXPECT_EQ(lookup_config_key(key), number) << key;
    }
}

TEST(ConfigKeys, that_are_not_exactly_known_have_the_number_39) {
    for (const char* key : {"", "SSID", "ssid ", " ssid", "ssi", "ssidx", "product_id", "#ssid",
                            "scan_proto", "p2p_channel", "interface_name_copy"}) {
        EXPECT_EQ(lookup_config_key(key), 39) << key;
    }
}

class ConfigFile : public ProcessFixture {
protected:
    int read(std::string_view content) {
        path_ = directory_.file("test.cfg", content);
        const int result = read_config_file(path_, config_);
        out_ = console_.out();
        err_ = console_.err();
        return result;
    }

    std::string path_;
    std::string out_;
    std::string err_;
};

TEST_F(ConfigFile, is_announced_by_its_path) {
    EXPECT_EQ(read("ssid=home\n"), 1);
    EXPECT_EQ(out_, "[WIFI]Reading Conf file: " + path_ + "\n");
    EXPECT_EQ(err_, "");
}

TEST_F(ConfigFile, that_cannot_be_opened_fails) {
    const std::string path = directory_ / "absent.cfg";
    EXPECT_EQ(read_config_file(path, config_), 0);
    EXPECT_EQ(console_.out(), "[WIFI]Reading Conf file: " + path +
                                  "\n[WIFI]Reading Conf file: " + path + " Failed\n");
    EXPECT_EQ(console_.err(), "");
}

TEST_F(ConfigFile, with_an_empty_path_fails) {
    EXPECT_EQ(read_config_file("", config_), 0);
    EXPECT_EQ(console_.out(), "[WIFI]Reading Conf file: \n[WIFI]Reading Conf file:  Failed\n");
}

TEST_F(ConfigFile, that_is_empty_reads_successfully) {
    EXPECT_EQ(read(""), 1);
    EXPECT_EQ(err_, "");
}

TEST_F(ConfigFile, without_any_recognised_key_reads_successfully) {
    EXPECT_EQ(read("colour=blue\n"), 1);
    EXPECT_EQ(err_, "[WIFI]Unknown key value pair..\nskipping key = colour value = blue\n");
    EXPECT_EQ(out_, "[WIFI]Reading Conf file: " + path_ + "\n");
}

TEST_F(ConfigFile, that_names_a_directory_cannot_be_read) {
    EXPECT_EQ(read_config_file(directory_.path(), config_), 0);
}

TEST_F(ConfigFile, fills_the_field_of_every_key) {
    const std::vector<std::pair<const char*, std::string RunConfig::*>> fields{
        {"device_type", &RunConfig::device_type},
        {"vendor_id", &RunConfig::vendor_id},
        {"wifidev", &RunConfig::wifidev},
        {"modulelist", &RunConfig::modulelist},
        {"ctrl_iface", &RunConfig::ctrl_iface},
        {"ctrl_interface_group", &RunConfig::ctrl_interface_group},
        {"interface_name", &RunConfig::interface_name},
        {"usbdevlist", &RunConfig::usbdevlist},
        {"go_ssid", &RunConfig::go_ssid},
        {"starting_go_intent", &RunConfig::starting_go_intent},
        {"device_name", &RunConfig::device_name},
        {"p2p_target_device_mac", &RunConfig::p2p_target_device_mac},
        {"go_passphrase", &RunConfig::go_passphrase},
        {"p2p_iface_ip", &RunConfig::p2p_iface_ip},
        {"dhcpd_path", &RunConfig::dhcpd_path},
        {"dhcpd_conf", &RunConfig::dhcpd_conf},
        {"start_ip_range", &RunConfig::start_ip_range},
        {"end_ip_range", &RunConfig::end_ip_range},
        {"iperf_path", &RunConfig::iperf_path},
        {"check_iperf", &RunConfig::check_iperf},
        {"check_ping", &RunConfig::check_ping},
        {"driver_path", &RunConfig::driver_path},
        {"firmware_path", &RunConfig::firmware_path},
        {"nvrams_path", &RunConfig::nvrams_path},
        {"max_transfer", &RunConfig::max_transfer},
        {"ssid", &RunConfig::ssid},
        {"psk", &RunConfig::psk},
        {"key_mgmt", &RunConfig::key_mgmt},
        {"pairwise", &RunConfig::pairwise},
        {"frequency", &RunConfig::frequency},
        {"txpower", &RunConfig::txpower},
        {"conf_file_path", &RunConfig::conf_file_path},
        {"conf_file_name", &RunConfig::conf_file_name},
        {"interface_ip", &RunConfig::interface_ip},
        {"loopback_pkt_cnt", &RunConfig::loopback_pkt_cnt},
        {"loopback_pkt_size", &RunConfig::loopback_pkt_size},
    };
    std::string content;
    for (const auto& [key, field] : fields) {
        content += std::string(key) + "=value of " + key + "\n";
    }
    EXPECT_EQ(read(content), 1);
    EXPECT_EQ(err_, "");
    for (const auto& [key, field] : fields) {
        EXPECT_EQ(config_.*field, std::string("value of ") + key);
    }
}

TEST_F(ConfigFile, leaves_the_fields_empty_that_no_key_fills) {
    read("ssid=home\n");
    EXPECT_EQ(config_.product_id, "");
    EXPECT_THAT(config_.product_ids, IsEmpty());
    EXPECT_EQ(config_.scan_proto, "");
    EXPECT_EQ(config_.scan_key_mgmt, "");
    EXPECT_EQ(config_.scan_pairwise, "");
    EXPECT_EQ(config_.interface_name, "");
    EXPECT_EQ(config_.usbdevlist, "");
}

TEST_F(ConfigFile, sets_both_copies_of_the_interface_name) {
    read("interface_name=wlan0\n");
    EXPECT_EQ(config_.interface_name, "wlan0");
    EXPECT_EQ(config_.interface_name_copy, "wlan0");
}

struct Line {
    const char* name;
    const char* content;
    /// What one field holds afterwards, and what is reported.
    std::string RunConfig::*field;
    const char* value;
    const char* report;
};

void PrintTo(const Line& line, std::ostream* out) {
    *out << line.name;
}

class LineOfAConfigFile : public ConfigFile, public WithParamInterface<Line> {};

TEST_P(LineOfAConfigFile, is_read_to_the_letter) {
    EXPECT_EQ(read(GetParam().content), 1);
    EXPECT_EQ(config_.*GetParam().field, GetParam().value);
    EXPECT_EQ(err_, GetParam().report);
}

INSTANTIATE_TEST_SUITE_P(
    Lines, LineOfAConfigFile,
    Values(Line{"overwrites_an_earlier_one_of_its_key", "ssid=first\nssid=second\n",
                &RunConfig::ssid, "second", ""},
           Line{"overwrites_an_earlier_one_with_nothing", "ssid=first\nssid=\n", &RunConfig::ssid,
                "", ""},
           Line{"of_the_listen_channel_overwrites_the_operating_channel",
                "p2p_oper_chan=11\np2p_listen_chan=6\n", &RunConfig::p2p_channel, "6", ""},
           Line{"of_the_operating_channel_overwrites_the_listen_channel",
                "p2p_listen_chan=1\np2p_oper_chan=11\n", &RunConfig::p2p_channel, "11", ""},
           Line{"splits_at_the_first_equals_sign", "psk=a=b==c\n", &RunConfig::psk, "a=b==c", ""},
           Line{"without_an_equals_sign_is_skipped_silently",
                "ssid\nsome words\n\n   \nssid=home\n", &RunConfig::ssid, "home", ""},
           Line{"is_a_comment_from_its_first_character_on", "#ssid=x\n//ssid=y\n# colour=blue\n",
                &RunConfig::ssid, "", ""},
           Line{"is_no_comment_behind_a_blank", " #ssid=x\n", &RunConfig::ssid, "",
                "[WIFI]Unknown key value pair..\nskipping key =  #ssid value = x\n"},
           Line{"is_no_comment_behind_a_single_slash", "/ssid=x\n", &RunConfig::ssid, "",
                "[WIFI]Unknown key value pair..\nskipping key = /ssid value = x\n"},
           Line{"keeps_comment_signs_inside_a_value", "psk=a#b//c\n", &RunConfig::psk, "a#b//c",
                ""},
           Line{"is_not_trimmed_around_its_key", "ssid = home\n", &RunConfig::ssid, "",
                "[WIFI]Unknown key value pair..\nskipping key = ssid  value =  home\n"},
           Line{"is_not_trimmed_around_its_value", "ssid= my home \n", &RunConfig::ssid,
                " my home ", ""},
           Line{"keeps_its_quotes", "ssid=\"home\"\n", &RunConfig::ssid, "\"home\"", ""},
           Line{"keeps_a_carriage_return", "ssid=home\r\npsk=secret\r\n", &RunConfig::ssid,
                "home\r", ""},
           Line{"keeps_a_carriage_return_at_the_end", "ssid=home\r\npsk=secret\r\n",
                &RunConfig::psk, "secret\r", ""},
           Line{"with_an_empty_key_is_reported", "=x\n", &RunConfig::ssid, "",
                "[WIFI]Unknown key value pair..\nskipping key =  value = x\n"},
           Line{"with_an_unknown_key_is_reported_and_the_next_one_read", "a=1\nssid=home\nSSID=2\n",
                &RunConfig::ssid, "home",
                "[WIFI]Unknown key value pair..\nskipping key = a value = 1\n"
                "[WIFI]Unknown key value pair..\nskipping key = SSID value = 2\n"},
           Line{"needs_no_final_newline", "ssid=home\npsk=secret", &RunConfig::psk, "secret", ""}),
    [](const auto& line) { return line.param.name; });

TEST_F(ConfigFile, reads_a_line_of_511_characters_whole) {
    const std::string value(511 - 5, 'v');
    EXPECT_EQ(read("ssid=" + value + "\npsk=secret\n"), 1);
    EXPECT_EQ(config_.ssid, value);
    EXPECT_EQ(config_.psk, "secret");
    EXPECT_EQ(err_, "");
}

TEST_F(ConfigFile, reads_a_last_line_of_511_characters_without_newline_whole) {
    const std::string value(511 - 5, 'v');
    EXPECT_EQ(read("ssid=" + value), 1);
    EXPECT_EQ(config_.ssid, value);
    EXPECT_EQ(err_, "");
}

class TooLongLine : public ConfigFile, public WithParamInterface<std::size_t> {};

TEST_P(TooLongLine, is_cut_behind_511_characters_and_reported_with_its_number) {
    const std::string value(GetParam() - 5, 'v');
    EXPECT_EQ(read("psk=before\n\nssid=" + value + "\npsk=after\n"), 1);
    EXPECT_EQ(config_.ssid, std::string(511 - 5, 'v'));
    EXPECT_EQ(config_.psk, "after");
    EXPECT_EQ(err_,
              "[WIFI]" + path_ + ":3: line is longer than 511 characters, the rest is skipped\n");
}

TEST_P(TooLongLine, is_no_harm_as_the_last_line_without_newline) {
    const std::string value(GetParam() - 5, 'v');
    EXPECT_EQ(read("psk=before\nssid=" + value), 1);
    EXPECT_EQ(config_.ssid, std::string(511 - 5, 'v'));
    EXPECT_EQ(config_.psk, "before");
    EXPECT_EQ(err_,
              "[WIFI]" + path_ + ":2: line is longer than 511 characters, the rest is skipped\n");
}

INSTANTIATE_TEST_SUITE_P(Lengths, TooLongLine, Values(512, 513, 1022, 1023, 1024, 1535, 100000),
                         [](const auto& length) {
                             return "length_" + std::to_string(length.param);
                         });

TEST_F(ConfigFile, reads_no_setting_out_of_the_rest_of_a_long_line) {
    EXPECT_EQ(read("#" + std::string(510, 'x') + "ssid=evil\npsk=" + std::string(507, 'x') +
                   "ssid=evil\nfrequency=2412\n"),
              1);
    EXPECT_EQ(config_.ssid, "");
    EXPECT_EQ(config_.frequency, "2412");
}

TEST_F(ConfigFile, survives_zero_bytes) {
    using namespace std::string_literals;
    EXPECT_EQ(read("ssid=ab\0cd\n\0\0=x\nfrequency=2412\n"s), 1);
    EXPECT_EQ(config_.ssid.substr(0, 2), "ab");
    EXPECT_EQ(config_.frequency, "2412");
}

TEST_F(ConfigFile, leaves_out_what_stands_behind_a_zero_byte_of_a_line) {
    using namespace std::string_literals;
    EXPECT_EQ(read("ssid=ab\0frequency=2412\npsk=secret\n"s), 1);
    EXPECT_EQ(config_.ssid, "ab");
    EXPECT_EQ(config_.frequency, "");
    EXPECT_EQ(config_.psk, "secret");
}

TEST_F(ConfigFile, overwrites_the_device_list_for_the_capital_bus_names) {
    read("usbdevlist=/my/list\ndevice_type=USB\n");
    EXPECT_EQ(config_.usbdevlist, "/proc/bus/usb/devices");
    read("device_type=PCIE\nusbdevlist=/my/list\n");
    EXPECT_EQ(config_.usbdevlist, "/proc/bus/pci/devices");
}

TEST_F(ConfigFile, keeps_the_configured_device_list_for_other_bus_names) {
    for (const char* bus : {"usb", "pcie", "USB ", "SDIO"}) {
        RunConfig config;
        read_config_file(
            directory_.file("bus.cfg",
                            std::string("usbdevlist=/my/list\ndevice_type=") + bus + "\n"),
            config);
        EXPECT_EQ(config.usbdevlist, "/my/list") << bus;
    }
}

TEST_F(ConfigFile, replaces_a_known_vendor_by_its_id_and_product_ids) {
    read("vendor_id=BRCM\ndevice_type=PCIE\n");
    EXPECT_EQ(config_.vendor_id, "14e4");
    EXPECT_THAT(config_.product_ids, ElementsAre("aa31"));
    EXPECT_EQ(config_.usbdevlist, "/proc/bus/pci/devices");
    EXPECT_EQ(out_, "[WIFI]Reading Conf file: " + path_ + "\n");
}

TEST_F(ConfigFile, finds_the_vendor_under_the_small_bus_name_too) {
    read("device_type=usb\nvendor_id=QCA\nusbdevlist=/my/list\n");
    EXPECT_EQ(config_.vendor_id, "0cf3");
    EXPECT_THAT(config_.product_ids, ElementsAre("1022", "9378"));
    EXPECT_EQ(config_.usbdevlist, "/my/list");
}

TEST_F(ConfigFile, leaves_a_vendor_that_is_unknown_on_its_bus) {
    read("vendor_id=QCA\ndevice_type=pcie\nusbdevlist=/my/list\n");
    EXPECT_EQ(config_.vendor_id, "QCA");
    EXPECT_THAT(config_.product_ids, IsEmpty());
    EXPECT_EQ(config_.usbdevlist, "/my/list");
}

TEST_F(ConfigFile, looks_no_vendor_up_without_a_bus) {
    run_options.debug = 1;
    read("vendor_id=BRCM\n");
    EXPECT_EQ(config_.vendor_id, "BRCM");
    EXPECT_EQ(out_, "[WIFI]Reading Conf file: " + path_ + "\n");
}

TEST_F(ConfigFile, shows_the_number_of_product_ids_with_debug) {
    run_options.debug = 1;
    read("vendor_id=BRCM\ndevice_type=USB\n");
    EXPECT_EQ(out_, "[WIFI]Reading Conf file: " + path_ +
                        "\n[WIFI]Pushing PIDs\n[WIFI]pid array size \n2\n");
    EXPECT_EQ(err_, "");
}

TEST_F(ConfigFile, shows_no_number_of_product_ids_for_an_unknown_vendor) {
    run_options.debug = 1;
    EXPECT_EQ(read("vendor_id=ACME\ndevice_type=USB\n"), 1);
    EXPECT_EQ(out_, "[WIFI]Reading Conf file: " + path_ + "\n[WIFI]Pushing PIDs\n");
    EXPECT_EQ(config_.vendor_id, "ACME");
}

} // namespace
} // namespace wivex

// SPDX-License-Identifier: Apache-2.0
// The supplicant's scan listing: how it is read, and how a station finds its network in it.

#include "common/process_state.hpp"
#include "ops/station.hpp"
#include "session_fixture.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <tuple>

namespace wivex {
namespace {

using namespace test_support;
using namespace testing;

constexpr const char* header = "bssid / frequency / signal level / flags / ssid\n";

class FindNetwork : public SessionFixture {
protected:
    void SetUp() override {
        SessionFixture::SetUp();
        config_.go_ssid = "home";
    }

    void answer_scan_results(const std::string& lines) {
        supplicant_.answer("SCAN_RESULTS", {header + lines});
    }

    /// Protocol, key management and ciphers that were read out of the listing.
    std::tuple<std::string, std::string, std::string> security() const {
        return {config_.scan_proto, config_.scan_key_mgmt, config_.scan_pairwise};
    }
};

// ---- listing -----------------------------------------------------------------------------------

TEST_F(FindNetwork, appends_the_whole_reply_buffer_to_the_listing) {
    const std::string text = std::string(header) + "02:00\t2412\t-40\t[ESS]\thome\n";
    supplicant_.answer("SCAN_RESULTS", {text});
    std::string listing = "before";
    EXPECT_TRUE(cmd_to_scan_results(*session_, listing));
    EXPECT_EQ(listing, "before" + text + std::string(1248 - text.size(), '\0'));
    EXPECT_EQ(console_.err(), "");
}

TEST_F(FindNetwork, takes_a_listing_that_is_cut_at_the_buffer) {
    const std::string text = std::string(header) + std::string(2000, 'x');
    supplicant_.answer("SCAN_RESULTS", {text});
    std::string listing;
    EXPECT_TRUE(cmd_to_scan_results(*session_, listing));
    EXPECT_EQ(listing, text.substr(0, 1247) + std::string(1, '\0'));
}

TEST_F(FindNetwork, refuses_a_listing_that_fails_or_has_no_header) {
    supplicant_.answer("SCAN_RESULTS", {"FAIL\n"});
    supplicant_.answer("SCAN_RESULTS", {"OK\n"});
    supplicant_.answer("SCAN_RESULTS", {""});
    supplicant_.answer("SCAN_RESULTS", {"BSSID\n"});
    supplicant_.answer("SCAN_RESULTS", {"ssid bssi\n"});
    for (int i = 0; i < 5; ++i) {
        std::string listing;
        EXPECT_FALSE(cmd_to_scan_results(*session_, listing));
        EXPECT_EQ(listing, "");
        EXPECT_EQ(console_.err(), "scan_results Command not successful\n");
    }
    EXPECT_EQ(console_.out(), "");
}

// ---- finding the network -----------------------------------------------------------------------

struct Security {
    const char* name;
    const char* flags;
    const char* proto;
    const char* key_mgmt;
    const char* pairwise;
};

void PrintTo(const Security& security, std::ostream* out) {
    *out << security.flags;
}

class ScanLine : public FindNetwork, public WithParamInterface<Security> {};

TEST_P(ScanLine, gives_the_security_of_the_network) {
    config_.scan_proto = "old";
    config_.scan_key_mgmt = "old";
    config_.scan_pairwise = "old";
    answer_scan_results(std::string("02:00:00:00:00:01\t2412\t-40\t") + GetParam().flags +
                        "\thome\n");
    EXPECT_EQ(cmd_to_find_network(*session_, config_), 0);
    EXPECT_THAT(security(), FieldsAre(GetParam().proto, GetParam().key_mgmt, GetParam().pairwise));
    EXPECT_THAT(console_.streams(), Pair("homeis found...\n", ""));
}

INSTANTIATE_TEST_SUITE_P(
    Flags, ScanLine,
    Values(Security{"mixed", "[WPA-PSK-CCMP+TKIP][WPA2-PSK-CCMP+TKIP][ESS]", "WPA2", "WPA-PSK",
                    "CCMP TKIP"},
           Security{"wpa2", "[WPA2-PSK-CCMP][ESS]", "RSN", "WPA-PSK", "CCMP"},
           Security{"wpa", "[WPA-PSK-TKIP][ESS]", "WPA", "WPA-PSK", "TKIP"},
           Security{"wpa_ccmp", "[WPA-PSK-CCMP][ESS]", "WPA", "WPA-PSK", "CCMP"},
           Security{"wpa2_both_ciphers", "[WPA2-PSK-CCMP+TKIP][ESS]", "RSN", "WPA-PSK",
                    "CCMP TKIP"},
           Security{"wpa2_enterprise", "[WPA2-EAP-CCMP][ESS]", "RSN", "WPA-EAP", "CCMP"},
           Security{"wpa_enterprise", "[WPA-EAP-TKIP][ESS]", "WPA", "WPA-EAP", "TKIP"},
           Security{"enterprise_without_bracket", "WPA2-EAP-CCMP", "old", "WPA-EAP", "CCMP"},
           Security{"wpa_enterprise_without_bracket", "WPA-EAP-CCMP", "old", "old", "CCMP"},
           Security{"personal_before_enterprise", "[WPA-EAP-TKIP][WPA2-PSK-CCMP]", "WPA2",
                    "WPA-PSK", "CCMP TKIP"},
           Security{"wpa2_of_another_kind", "[WPA2-SAE-CCMP][ESS]", "RSN", "WPA-NONE", "CCMP"},
           Security{"wpa_of_another_kind", "[WPA-None-CCMP][ESS]", "WPA", "WPA-NONE", "CCMP"},
           Security{"wpa2_without_dash", "[WPA2][ESS]", "RSN", "old", "NONE"},
           Security{"wpa_without_dash", "[WPA][ESS]", "WPA", "old", "NONE"},
           Security{"open", "[ESS]", "old", "old", "NONE"},
           Security{"wep", "[WEP][ESS]", "old", "old", "NONE"},
           Security{"protected_setup", "[WPS][ESS]", "old", "old", "NONE"},
           Security{"wpa2_without_bracket", "WPA2-PSK [WPA-PSK-TKIP]", "WPA", "WPA-PSK", "TKIP"},
           Security{"wpa_without_bracket", "[WPA2-PSK-CCMP] WPA-PSK", "RSN", "WPA-PSK", "CCMP"},
           Security{"nearly_personal_or_enterprise", "[WPA-PSX][WPA-EAX][WPA2-PSX][WPA2-EAX]",
                    "WPA2", "WPA-NONE", "NONE"},
           Security{"mixed_without_dash", "[WPA2][WPA-PSK-TKIP]", "RSN", "WPA-PSK", "TKIP"},
           Security{"personal_without_bracket", "WPA-PSK WPA2-PSK", "old", "old", "NONE"},
           Security{"nearly_enterprise", "PA2-EAP", "old", "old", "NONE"},
           Security{"nearly_ciphers", "CCM CMP TKI KIP", "old", "old", "NONE"},
           Security{"ciphers_alone", "TKIP CCMP", "old", "old", "CCMP TKIP"}),
    [](const auto& security) { return security.param.name; });

TEST_F(FindNetwork, finds_an_ssid_that_is_part_of_a_longer_one) {
    answer_scan_results("02:00\t2412\t-40\t[ESS]\tmyhome5\n");
    EXPECT_EQ(cmd_to_find_network(*session_, config_), 0);
}

TEST_F(FindNetwork, takes_the_security_of_the_last_line_that_matches) {
    answer_scan_results("02:01\t2412\t-40\t[WPA2-PSK-CCMP]\thome\n"
                        "02:02\t2412\t-40\t[WPA-EAP-TKIP]\thome2\n"
                        "02:03\t2412\t-40\t[WPA2-PSK-CCMP]\tother\n");
    EXPECT_EQ(cmd_to_find_network(*session_, config_), 0);
    EXPECT_THAT(security(), FieldsAre("WPA", "WPA-EAP", "TKIP"));
    EXPECT_EQ(console_.out(), "homeis found...\n");
}

TEST_F(FindNetwork, keeps_proto_and_key_management_of_an_earlier_line_when_the_last_has_none) {
    answer_scan_results("02:01\t2412\t-40\t[WPA2-PSK-CCMP]\thome\n"
                        "02:02\t2412\t-40\t[ESS]\thome\n");
    EXPECT_EQ(cmd_to_find_network(*session_, config_), 0);
    EXPECT_THAT(security(), FieldsAre("RSN", "WPA-PSK", "NONE"));
}

TEST_F(FindNetwork, does_not_find_a_network_that_is_not_listed) {
    config_.scan_proto = "old";
    config_.scan_pairwise = "old";
    answer_scan_results("02:01\t2412\t-40\t[ESS]\tHOME\n");
    EXPECT_EQ(cmd_to_find_network(*session_, config_), 1);
    EXPECT_THAT(console_.streams(), Pair("homeis not found!!!\n", ""));
    EXPECT_EQ(config_.scan_proto, "old");
    EXPECT_EQ(config_.scan_pairwise, "old");
}

TEST_F(FindNetwork, finds_nothing_without_an_ssid) {
    config_.go_ssid.clear();
    answer_scan_results("02:01\t2412\t-40\t[ESS]\thome\n");
    EXPECT_EQ(cmd_to_find_network(*session_, config_), 1);
    EXPECT_EQ(console_.out(), "is not found!!!\n");
}

TEST_F(FindNetwork, finds_nothing_without_a_listing) {
    supplicant_.answer("SCAN_RESULTS", {"FAIL\n"});
    EXPECT_EQ(cmd_to_find_network(*session_, config_), 1);
    EXPECT_THAT(console_.streams(),
                Pair("homeis not found!!!\n", "scan_results Command not successful\n"));
}

TEST_F(FindNetwork, shows_the_lines_of_the_listing_with_debug) {
    run_options.debug = 1;
    answer_scan_results("02:01\t2412\t-40\t[ESS]\thome\n");
    EXPECT_EQ(cmd_to_find_network(*session_, config_), 0);
    const std::string out = console_.out();
    const std::string lines = std::string(header) + "02:01\t2412\t-40\t[ESS]\thome\n";
    EXPECT_EQ(out.substr(0, lines.size()), lines);
    EXPECT_EQ(out.substr(out.size() - 16), "homeis found...\n");
}

TEST_F(FindNetwork, reads_a_listing_with_a_line_of_more_than_512_bytes_to_its_end) {
    answer_scan_results(std::string(700, 'x') + "\n02:01\t2412\t-40\t[WPA2-PSK-CCMP]\thome\n");
    EXPECT_EQ(cmd_to_find_network(*session_, config_), 0);
    EXPECT_EQ(config_.scan_proto, "RSN");
}

} // namespace
} // namespace wivex

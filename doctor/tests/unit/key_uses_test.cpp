// SPDX-License-Identifier: Apache-2.0
#include "key_uses.hpp"
#include "run/config_file.hpp"

#include <gtest/gtest.h>

#include <array>

namespace wivex::doctor {
namespace {

RunPlan plan_of(char mode) {
    RunPlan plan;
    plan.mode = mode;
    return plan;
}

TEST(NearestKey, is_the_one_that_was_meant) {
    EXPECT_EQ(nearest_key("go_sid"), "go_ssid");
    EXPECT_EQ(nearest_key(" Ctrl_Iface "), "ctrl_iface");
    EXPECT_EQ(nearest_key("usb_devlist"), "usbdevlist");
}

TEST(NearestKey, is_none_for_another_word) {
    EXPECT_EQ(nearest_key("country"), "");
    EXPECT_EQ(nearest_key(""), "");
    EXPECT_EQ(nearest_key(std::string(5000, 'x')), "");
}

TEST(KeyUse, is_known_to_the_tool) {
    int uses = 0;
    for (const ConfigKey& key : config_key_table()) {
        uses += find_key_use(key.name) != nullptr ? 1 : 0;
    }
    EXPECT_EQ(uses, 18);
}

TEST(KeyUse, tells_which_run_reads_it) {
    EXPECT_TRUE(is_read(*find_key_use("wifidev"), plan_of('S')));
    EXPECT_TRUE(is_read(*find_key_use("go_ssid"), plan_of('w')));
    EXPECT_FALSE(is_read(*find_key_use("go_ssid"), plan_of('c')));
    EXPECT_FALSE(is_read(*find_key_use("loopback_pkt_cnt"), plan_of('w')));
    RunPlan loopback;
    loopback.loopback = true;
    EXPECT_TRUE(is_read(*find_key_use("loopback_pkt_cnt"), loopback));
}

TEST(KeyUse, is_missing_for_what_no_mode_reads) {
    EXPECT_EQ(find_key_use("device_name"), nullptr);
}

} // namespace
} // namespace wivex::doctor

// SPDX-License-Identifier: Apache-2.0
// What a device tells of itself, from files of a folder that stands for it.

#include "program/device_facts.hpp"
#include "temporary_folder.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>

namespace {

using namespace wivex::report;

class DeviceFacts : public testing::Test {
protected:
    void write(const std::string& path, std::string_view text) const {
        std::filesystem::create_directories(std::filesystem::path(root_ + path).parent_path());
        std::ofstream(root_ + path, std::ios::binary) << text;
    }

    test_tools::TemporaryFolder folder_{"device-facts"};
    const std::string& root_ = folder_.path();
};

TEST_F(DeviceFacts, come_from_the_device_tree) {
    write("/proc/device-tree/model", std::string_view("Board X rev 2\0", 14));
    write("/proc/device-tree/serial-number", std::string_view("10000000abcd\0", 13));
    write("/sys/class/dmi/id/product_serial", "other\n");
    const Identity identity = facts_in_files(root_, "wlan0");
    EXPECT_EQ(identity.part, "Board X rev 2");
    EXPECT_EQ(identity.serial, "10000000abcd");
}

TEST_F(DeviceFacts, come_from_dmi_where_there_is_no_device_tree) {
    write("/sys/class/dmi/id/product_name", "Box 7\n");
    write("/sys/class/dmi/id/product_serial", "S-99 \n");
    const Identity identity = facts_in_files(root_, "wlan0");
    EXPECT_EQ(identity.part, "Box 7");
    EXPECT_EQ(identity.serial, "S-99");
}

TEST_F(DeviceFacts, are_never_what_the_maker_of_the_board_left_as_it_came) {
    for (const char* const text : {"To Be Filled By O.E.M.\n", "Default string\n", "None\n", "0\n",
                                   "System Serial Number\n", "\n", "", "a\x01z\n"}) {
        write("/sys/class/dmi/id/product_serial", text);
        EXPECT_EQ(facts_in_files(root_, "wlan0").serial, "") << text;
    }
    write("/sys/class/dmi/id/product_serial", std::string(1000, 'x'));
    EXPECT_EQ(facts_in_files(root_, "wlan0").serial, "");
}

TEST_F(DeviceFacts, name_mac_driver_and_version_of_the_interface) {
    write("/sys/class/net/wlan7/address", "02:00:00:00:AB:01\n");
    std::filesystem::create_directories(root_ + "/bus/drivers/bcmdhd");
    std::filesystem::create_directories(root_ + "/sys/class/net/wlan7/device");
    std::filesystem::create_directory_symlink(root_ + "/bus/drivers/bcmdhd",
                                              root_ + "/sys/class/net/wlan7/device/driver");
    write("/bus/drivers/bcmdhd/module/version", "1.363.45\n");
    const Identity identity = facts_in_files(root_, "wlan7");
    EXPECT_EQ(identity.mac, "02:00:00:00:ab:01");
    EXPECT_EQ(identity.driver, "bcmdhd");
    EXPECT_EQ(identity.driver_version, "1.363.45");
}

TEST_F(DeviceFacts, are_unknown_and_not_guessed_where_nothing_stands) {
    const Identity identity = facts_in_files(root_, "wlan0");
    for (const NamedText& row : identity_texts()) {
        EXPECT_EQ(identity.*row.text, "") << row.name;
    }
}

TEST_F(DeviceFacts, do_not_wait_for_a_pipe_that_nobody_writes) {
    std::filesystem::create_directories(root_ + "/sys/class/net/wlan0");
    ASSERT_EQ(mkfifo((root_ + "/sys/class/net/wlan0/address").c_str(), 0600), 0);
    EXPECT_EQ(facts_in_files(root_, "wlan0").mac, "");
}

TEST(KernelFacts, tell_the_release_and_nothing_of_an_interface_that_is_not_there) {
    const Identity identity = facts_of_kernel("no-such-if0");
    EXPECT_NE(identity.kernel, "");
    EXPECT_EQ(identity.driver, "");
    EXPECT_EQ(identity.firmware, "");
    EXPECT_EQ(identity.regulatory_domain, "");
    EXPECT_THAT(device_facts("no-such-if0").warnings,
                testing::ElementsAre("the device tells no MAC address of no-such-if0"));
}

TEST(ToldWithin, returns_what_was_told_or_nothing_in_time) {
    EXPECT_EQ(told_within(std::chrono::seconds(20), [] { return std::string("yes"); }), "yes");
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(told_within(std::chrono::milliseconds(50),
                          [] {
                              sleep(60);
                              return std::string("late");
                          }),
              std::nullopt);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(30));
}

TEST(InterfaceName, is_one_that_the_kernel_would_take) {
    EXPECT_TRUE(is_interface_name("wlan0"));
    EXPECT_FALSE(is_interface_name(""));
    EXPECT_FALSE(is_interface_name(".."));
    EXPECT_FALSE(is_interface_name("a/b"));
    EXPECT_FALSE(is_interface_name("a b"));
    EXPECT_FALSE(is_interface_name("a-name-of-16-xxx"));
}

} // namespace

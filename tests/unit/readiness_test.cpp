// SPDX-License-Identifier: Apache-2.0
#include "common/process_state.hpp"
#include "process_fixture.hpp"
#include "run/readiness.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <ostream>
#include <string>

namespace wivex {
namespace {

using namespace test_support;
using namespace testing;

class Readiness : public ProcessFixture {
protected:
    int chip_in(std::string_view device_list) {
        return detect_usb_chip(directory_.file("devices", device_list), config_);
    }

    int flag(std::string_view flags, int bit = 1) {
        status_ = 77;
        return read_interface_flag(directory_.file("flags", flags), bit, status_);
    }

    std::int32_t status_ = 0;
};

struct KnownModule {
    const char* text;
    int chip_type;
    const char* product_id;
};

void PrintTo(const KnownModule& module, std::ostream* out) {
    *out << module.text;
}

class ModuleOnTheBus : public Readiness, public WithParamInterface<KnownModule> {};

TEST_P(ModuleOnTheBus, is_found_by_the_ids_in_the_middle_of_its_line) {
    const auto& module = GetParam();
    EXPECT_EQ(chip_in(std::string("T:  Bus=01 Lev=01 Prnt=01 Port=00 Cnt=01 Dev#=  2 Spd=480\n"
                                  "D:  Ver= 2.00 Cls=ff(vend.) Sub=ff Prot=ff MxPS=64 #Cfgs=  1\n"
                                  "P:  ") +
                      module.text + " Rev= 0.01\nS:  Product=WLAN\n"),
              module.chip_type);
    EXPECT_EQ(config_.product_id, module.product_id);
}

INSTANTIATE_TEST_SUITE_P(Known, ModuleOnTheBus,
                         Values(KnownModule{"Vendor=0cf3 ProdID=1022", 1, "1022"},
                                KnownModule{"Vendor=0cf3 ProdID=9378", 2, "9378"},
                                KnownModule{"Vendor=0a5c ProdID=bd27", 3, "bd27"},
                                KnownModule{"Vendor=0a5c ProdID=bd1d", 4, "bd1d"},
                                KnownModule{"Vendor=9e0c ProdID=20a0", 5, "20a0"}),
                         [](const auto& module) {
                             return std::string("product_") + module.param.product_id;
                         });

TEST_F(Readiness, finds_no_module_among_strangers) {
    config_.product_id = "kept";
    EXPECT_EQ(chip_in("P:  Vendor=1d6b ProdID=0002 Rev= 4.09\nP:  Vendor=0CF3 ProdID=1022\n"
                      "P:  Vendor=0cf3  ProdID=1022\nP:  Vendor=148f ProdID=3572\n"
                      "P:  Vendor=0cf3\nProdID=1022\n"),
              0);
    EXPECT_EQ(config_.product_id, "kept");
}

TEST_F(Readiness, needs_the_ids_of_a_module_from_their_first_letter_to_their_last) {
    for (const char* cut :
         {"endor=0cf3 ProdID=1022", "endor=0cf3 ProdID=9378", "endor=0a5c ProdID=bd27",
          "endor=0a5c ProdID=bd1d", "endor=9e0c ProdID=20a0", "Vendor=0cf3 ProdID=102",
          "Vendor=0cf3 ProdID=937", "Vendor=0a5c ProdID=bd2", "Vendor=0a5c ProdID=bd1",
          "Vendor=9e0c ProdID=20a"}) {
        EXPECT_EQ(chip_in(std::string("P:  v") + cut + " Rev= 0.01\n"), 0) << cut;
        EXPECT_EQ(chip_in(cut), 0) << cut;
    }
}

TEST_F(Readiness, takes_the_module_that_comes_first_in_the_file) {
    EXPECT_EQ(chip_in("P:  Vendor=0cf3 ProdID=9378 Rev= 0.01\nP:  Vendor=0cf3 ProdID=1022 Rev=\n"),
              2);
    EXPECT_EQ(config_.product_id, "9378");
}

TEST_F(Readiness, takes_the_first_of_the_table_within_one_line) {
    EXPECT_EQ(chip_in("Vendor=9e0c ProdID=20a0 Vendor=0cf3 ProdID=9378 Vendor=0cf3 ProdID=1022\n"),
              1);
    EXPECT_EQ(config_.product_id, "1022");
}

TEST_F(Readiness, needs_no_final_newline_in_the_device_list) {
    EXPECT_EQ(chip_in("P:  Vendor=9e0c ProdID=20a0"), 5);
}

TEST_F(Readiness, finds_a_module_behind_a_very_long_line) {
    EXPECT_EQ(chip_in(std::string(5000, 'x') + "\nP:  Vendor=0a5c ProdID=bd27 Rev= 0.01\n"), 3);
}

TEST_F(Readiness, reads_a_long_line_in_pieces_of_511_characters) {
    const std::string module = "Vendor=0a5c ProdID=bd27";
    EXPECT_EQ(chip_in(std::string(511 - module.size(), 'x') + module), 3);
    EXPECT_EQ(chip_in(std::string(510, 'x') + module), 0); // its first letter stands in the first
    EXPECT_EQ(chip_in(std::string(511, 'x') + module), 3);
}

TEST_F(Readiness, finds_nothing_in_an_empty_device_list) {
    EXPECT_EQ(chip_in(""), 0);
}

TEST_F(Readiness, says_nothing_about_an_unreadable_device_list) {
    EXPECT_EQ(detect_usb_chip(directory_ / "absent", config_), 0);
    EXPECT_THAT(console_.streams(), Pair("", ""));
}

TEST_F(Readiness, names_an_unreadable_device_list_with_debug) {
    run_options.debug = 1;
    const std::string path = directory_ / "absent";
    EXPECT_EQ(detect_usb_chip(path, config_), 0);
    EXPECT_EQ(console_.out(), "ERROR:Unable to open file " + path + "\n");
    EXPECT_EQ(console_.err(), "");
}

TEST_F(Readiness, module_check_shows_and_stores_the_chip) {
    config_.usbdevlist = directory_.file("devices", "P:  Vendor=0a5c ProdID=bd1d Rev= 0.01\n");
    config_.vendor_id = "0a5c";
    EXPECT_EQ(check_module(config_), 1);
    EXPECT_EQ(run_options.chip_type, 4);
    EXPECT_EQ(console_.out(),
              "[WIFI]Chip type is = 4\n[WIFI]Chip vendor id = 0a5c and product id bd1d\n");
    EXPECT_EQ(console_.err(), "");
}

TEST_F(Readiness, module_check_forgets_a_chip_that_is_gone) {
    run_options.chip_type = 4;
    config_.usbdevlist = directory_.file("devices", "");
    EXPECT_EQ(check_module(config_), 0);
    EXPECT_EQ(run_options.chip_type, 0);
    EXPECT_EQ(console_.out(), "");
}

TEST_F(Readiness, reads_hexadecimal_flags_as_decimal_digits) {
    EXPECT_EQ(flag("0x1003\n"), 1);
    EXPECT_EQ(status_, 0);
    EXPECT_EQ(flag("0x1002\n"), 0);
    EXPECT_EQ(status_, -2);
    EXPECT_EQ(flag("0x100b\n"), 0); // reads as 100
    EXPECT_EQ(status_, -2);
    EXPECT_EQ(flag("0x1\n"), 1);
    EXPECT_EQ(status_, 0);
    EXPECT_EQ(flag("0x11b3\n"), 1); // reads as 11
    EXPECT_EQ(status_, 0);
    EXPECT_EQ(flag("0xb3\n"), 0); // reads as 0
    EXPECT_EQ(status_, -2);
}

TEST_F(Readiness, skips_two_characters_whatever_they_are) {
    EXPECT_EQ(flag("773\n"), 1);
    EXPECT_EQ(flag("332\n"), 0);
}

TEST_F(Readiness, needs_no_final_newline_in_the_flags) {
    EXPECT_EQ(flag("0x1003"), 1);
}

TEST_F(Readiness, tests_the_bit_that_it_is_asked_for) {
    // 1003 is 1111101011 in binary.
    EXPECT_EQ(flag("0x1003\n", 2), 1);
    EXPECT_EQ(flag("0x1003\n", 3), 0);
    EXPECT_EQ(status_, -2);
    EXPECT_EQ(flag("0x1003\n", 10), 1);
    EXPECT_EQ(flag("0x1003\n", 11), 0);
}

TEST_F(Readiness, takes_empty_and_cut_flags_as_clear) {
    for (const char* flags : {"", "\n", "0", "0x", "0x\n", "1"}) {
        EXPECT_EQ(flag(flags), 0) << flags;
        EXPECT_EQ(status_, -2) << flags;
    }
}

TEST_F(Readiness, reads_only_the_first_line_of_the_flags) {
    EXPECT_EQ(flag("0x1002\n0x1003\n"), 0);
}

TEST_F(Readiness, survives_flags_longer_than_a_line_buffer) {
    EXPECT_EQ(flag("0x3" + std::string(2000, 'x')), 1);
}

TEST_F(Readiness, says_nothing_about_an_unreadable_flags_file) {
    EXPECT_EQ(read_interface_flag(directory_ / "absent", 1, status_), 0);
    EXPECT_EQ(status_, -1);
    EXPECT_THAT(console_.streams(), Pair("", ""));
}

TEST_F(Readiness, names_an_unreadable_flags_file_with_debug) {
    run_options.debug = 1;
    const std::string path = directory_ / "absent";
    EXPECT_EQ(read_interface_flag(path, 1, status_), 0);
    EXPECT_EQ(console_.out(), "ERROR:Unable to open file " + path + "\n");
    EXPECT_EQ(console_.err(), "");
}

TEST_F(Readiness, driver_check_reads_the_flags_of_the_interface) {
    config_.wifidev = directory_.path();
    config_.interface_name = "wlan7";
    EXPECT_EQ(interface_flags_path(config_), directory_.path() + "/wlan7/flags");
    EXPECT_EQ(check_driver(config_), -1);
    std::filesystem::create_directory(directory_ / "wlan7");
    directory_.file("wlan7/flags", "0x1002\n");
    EXPECT_EQ(check_driver(config_), -2);
    directory_.file("wlan7/flags", "0x1003\n");
    EXPECT_EQ(check_driver(config_), 0);
    EXPECT_EQ(console_.out(), "");
}

} // namespace
} // namespace wivex

// SPDX-License-Identifier: Apache-2.0
#include "common/process_state.hpp"
#include "console_capture.hpp"
#include "run/chip_tables.hpp"
#include "scratch.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

namespace wivex {
namespace {

using namespace test_support;
using namespace testing;

constexpr int usb = 0;
constexpr int pcie = 1;

TEST(ChipTables, know_two_spellings_of_each_bus) {
    EXPECT_EQ(device_type_code("USB"), 0);
    EXPECT_EQ(device_type_code("usb"), 0);
    EXPECT_EQ(device_type_code("PCIE"), 1);
    EXPECT_EQ(device_type_code("pcie"), 1);
}

TEST(ChipTables, give_every_other_bus_the_code_2) {
    for (const char* text : {"", "Usb", "USB ", "PCIe", "SDIO", "USBX"}) {
        EXPECT_EQ(device_type_code(text), 2) << text;
    }
}

TEST(ChipTables, number_the_vendors) {
    EXPECT_EQ(vendor_code("QCA"), 0);
    EXPECT_EQ(vendor_code("BRCM"), 1);
    EXPECT_EQ(vendor_code("BRCM16"), 2);
    EXPECT_EQ(vendor_code("Ralink"), 3);
    EXPECT_EQ(vendor_code("MTK"), 4);
}

TEST(ChipTables, give_every_other_vendor_the_code_5) {
    for (const char* text : {"", "qca", "brcm", "RALINK", "ralink", "BRCM1", "BRCM165", "mtk"}) {
        EXPECT_EQ(vendor_code(text), 5) << text;
    }
}

struct KnownChip {
    const char* name;
    int bus;
    int vendor;
    const char* vendor_id;
    std::vector<std::string> product_ids;
};

void PrintTo(const KnownChip& chip, std::ostream* out) {
    *out << chip.name;
}

class KnownPair : public ::testing::TestWithParam<KnownChip> {};

TEST_P(KnownPair, gives_its_vendor_id_and_product_ids) {
    test_support::reset_process_state();
    const auto& chip = GetParam();
    VendorId vendor{};
    vendor.fill('x');
    std::vector<std::string> product_ids;
    EXPECT_EQ(push_chip_ids(chip.bus, chip.vendor, &vendor, product_ids), 1);
    EXPECT_EQ(vendor[4], '\0');
    EXPECT_STREQ(vendor.data(), chip.vendor_id);
    EXPECT_EQ(product_ids, chip.product_ids);
}

INSTANTIATE_TEST_SUITE_P(Table, KnownPair,
                         ::testing::Values(KnownChip{"usb_qca", usb, 0, "0cf3", {"1022", "9378"}},
                                           KnownChip{"usb_brcm", usb, 1, "0a5c", {"bd27", "bd1d"}},
                                           KnownChip{"usb_brcm16", usb, 2, "9e0c", {"20a0"}},
                                           KnownChip{"usb_ralink", usb, 3, "148f", {"3572"}},
                                           KnownChip{"usb_mtk", usb, 4, "abcd", {"0000"}},
                                           KnownChip{"pcie_brcm", pcie, 1, "14e4", {"aa31"}}),
                         [](const auto& chip) { return chip.param.name; });

TEST(ChipTables, do_not_know_any_other_pair) {
    for (int bus = -1; bus <= 3; ++bus) {
        for (int vendor = -1; vendor <= 6; ++vendor) {
            const bool known =
                (bus == usb && vendor >= 0 && vendor <= 4) || (bus == pcie && vendor == 1);
            if (known) {
                continue;
            }
            SCOPED_TRACE(::testing::Message() << bus << ", " << vendor);
            VendorId vendor_id{};
            std::vector<std::string> product_ids;
            EXPECT_EQ(push_chip_ids(bus, vendor, &vendor_id, product_ids), 0);
            EXPECT_THAT(product_ids, IsEmpty());
        }
    }
}

TEST(ChipTables, append_behind_the_product_ids_that_are_there) {
    VendorId vendor{};
    std::vector<std::string> product_ids{"ffff"};
    push_chip_ids(usb, 1, &vendor, product_ids);
    EXPECT_THAT(product_ids, ElementsAre("ffff", "bd27", "bd1d"));
}

TEST(ChipTables, refuse_a_missing_place_for_the_vendor_id) {
    std::vector<std::string> product_ids;
    EXPECT_EQ(push_chip_ids(usb, 1, nullptr, product_ids), 0);
    EXPECT_THAT(product_ids, IsEmpty());
}

TEST(ChipTables, say_nothing_unless_debug_is_set) {
    test_support::reset_process_state();
    ConsoleCapture console;
    VendorId vendor{};
    std::vector<std::string> product_ids;
    push_chip_ids(usb, 1, &vendor, product_ids);
    EXPECT_EQ(console.out(), "");
    EXPECT_EQ(console.err(), "");
}

TEST(ChipTables, announce_the_lookup_with_debug_whatever_its_outcome) {
    test_support::reset_process_state();
    run_options.debug = 1;
    ConsoleCapture console;
    VendorId vendor{};
    std::vector<std::string> product_ids;
    push_chip_ids(usb, 1, &vendor, product_ids);
    EXPECT_EQ(console.out(), "[WIFI]Pushing PIDs\n");
    push_chip_ids(pcie, 0, &vendor, product_ids);
    EXPECT_EQ(console.out(), "[WIFI]Pushing PIDs\n");
    EXPECT_EQ(console.err(), "");
    test_support::reset_process_state();
}

} // namespace
} // namespace wivex

// SPDX-License-Identifier: Apache-2.0
#include "diag/broadcom_request.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

using namespace testing;
using wivex::Iovar;
using wivex::WlIoctlRecord;
namespace broadcom_request = wivex::broadcom_request;

std::vector<std::uint8_t> sent_part(const Iovar& iovar) {
    return {iovar.bytes().begin(), iovar.bytes().begin() + iovar.length()};
}

TEST(Iovar, of_the_loopback_mode_is_the_name_a_nul_and_1) {
    Iovar mode("bus:loopback");
    mode.append(1);
    EXPECT_EQ(17U, mode.length());
    EXPECT_THAT(sent_part(mode), ElementsAre('b', 'u', 's', ':', 'l', 'o', 'o', 'p', 'b', 'a', 'c',
                                             'k', 0, 1, 0, 0, 0));
}

TEST(Iovar, of_the_transfer_ends_with_a_status_slot_of_minus_1) {
    Iovar transfer("usb_lb_txfer");
    transfer.append(1514);
    transfer.append(100);
    transfer.append(-1);
    EXPECT_EQ(25U, transfer.length());
    EXPECT_THAT(sent_part(transfer),
                ElementsAre('u', 's', 'b', '_', 'l', 'b', '_', 't', 'x', 'f', 'e', 'r', 0, 0xEA,
                            0x05, 0, 0, 100, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF));
}

TEST(Iovar, is_zero_behind_its_last_value) {
    Iovar mode("bus:loopback");
    mode.append(-1);
    const std::vector<std::uint8_t> rest(mode.bytes().begin() + mode.length(), mode.bytes().end());
    EXPECT_EQ(111U, rest.size());
    EXPECT_THAT(rest, Each(0));
}

TEST(Iovar, of_the_current_address_has_14_bytes) {
    EXPECT_EQ(14U, Iovar("cur_etheraddr").length());
}

TEST(Iovar, cuts_a_name_that_does_not_fit_its_field) {
    EXPECT_EQ(30U, Iovar(std::string(500, 'x')).length());
}

TEST(Iovar, leaves_out_values_that_do_not_fit_the_buffer) {
    Iovar iovar("n");
    for (int value = 0; value < 100; ++value) {
        iovar.append(value);
    }
    EXPECT_EQ(2U + 31U * 4U, iovar.length());
}

TEST(Iovar, takes_values_up_to_the_last_byte_of_the_buffer) {
    Iovar iovar("abc");
    for (int value = 0; value < 100; ++value) {
        iovar.append(value);
    }
    EXPECT_EQ(128U, iovar.length());
    EXPECT_EQ(30, iovar.bytes()[124]);
}

TEST(BroadcomRecord, carries_command_length_set_flag_and_magic) {
    Iovar transfer("usb_lb_txfer");
    const WlIoctlRecord record =
        wivex::make_record(broadcom_request::driver_set_variable, transfer);
    EXPECT_EQ(3U, record.command);
    EXPECT_EQ(transfer.bytes().data(), record.buffer);
    EXPECT_EQ(13U, record.length);
    EXPECT_EQ(1, record.set);
    EXPECT_EQ(0U, record.used);
    EXPECT_EQ(0U, record.needed);
    EXPECT_EQ(0x00444944U, record.driver_magic);
}

TEST(BroadcomRecord, of_the_wl_layer_has_no_magic) {
    Iovar name("x");
    const WlIoctlRecord set = wivex::make_record(broadcom_request::wl_set_variable, name);
    EXPECT_EQ(263U, set.command);
    EXPECT_EQ(1, set.set);
    EXPECT_EQ(0U, set.driver_magic);
    const WlIoctlRecord get = wivex::make_record(broadcom_request::wl_get_variable, name);
    EXPECT_EQ(262U, get.command);
    EXPECT_EQ(0, get.set);
    EXPECT_EQ(0U, get.driver_magic);
}

TEST(BroadcomRecord, is_laid_out_as_the_kernel_of_its_word_size_reads_it) {
    Iovar mode("bus:loopback");
    mode.append(1);
    WlIoctlRecord record = wivex::make_record(broadcom_request::wl_set_variable, mode);
    record.buffer = nullptr;
    std::vector<std::uint8_t> bytes(sizeof(record));
    std::memcpy(bytes.data(), &record, sizeof(record));
    if (sizeof(void*) == 4) {
        EXPECT_THAT(bytes, ElementsAre(7, 1, 0, 0, 0, 0, 0, 0, 17, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0,
                                       0, 0, 0, 0, 0, 0, 0, 0));
    } else {
        bytes.resize(36);
        EXPECT_THAT(bytes, ElementsAre(7, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 17, 0, 0, 0,
                                       1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0));
    }
}

} // namespace

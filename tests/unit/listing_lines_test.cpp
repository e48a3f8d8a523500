// SPDX-License-Identifier: Apache-2.0
// Which lines of the supplicant's scan listing are searched and, with debug, shown.

#include "common/process_state.hpp"
#include "ops/station.hpp"
#include "session_fixture.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace wivex {
namespace {

using namespace testing;

class ListingLines : public test_support::SessionFixture {
protected:
    void SetUp() override {
        SessionFixture::SetUp();
        run_options.debug = 1;
        config_.go_ssid = "home";
    }

    /// A listing of so many bytes that names the access point last.
    static std::string listing_of(std::size_t length) {
        const std::string heading = "bssid / frequency / signal level / flags / ssid\n";
        const std::string last = "02:01\t2412\t-40\t[WPA2-PSK-CCMP]\thome\n";
        std::string text = heading;
        while (text.size() + last.size() < length) {
            const std::size_t left = length - text.size() - last.size();
            text += std::string(std::min<std::size_t>(left, 100) - 1, 'x') + "\n";
        }
        return text + last;
    }

    std::string shown_for(const std::string& listing) {
        supplicant_.answer("SCAN_RESULTS", {listing});
        EXPECT_EQ(cmd_to_find_network(*session_, config_), 0);
        return console_.out();
    }
};

TEST_F(ListingLines, end_with_an_empty_one_behind_a_listing_of_738_bytes) {
    EXPECT_EQ(shown_for(listing_of(738)), listing_of(738) + "\nhomeis found...\n");
}

TEST_F(ListingLines, end_with_an_empty_one_behind_a_listing_that_fills_the_buffer_but_for_a_byte) {
    EXPECT_EQ(shown_for(listing_of(1247)), listing_of(1247) + "\nhomeis found...\n");
}

TEST_F(ListingLines, end_with_the_listing_when_that_is_shorter) {
    EXPECT_EQ(shown_for(listing_of(737)), listing_of(737) + "homeis found...\n");
}

TEST_F(ListingLines, of_a_short_listing_are_just_these) {
    EXPECT_EQ(shown_for(listing_of(200)), listing_of(200) + "homeis found...\n");
}

TEST_F(ListingLines, go_on_behind_a_zero_byte) {
    const std::string broken =
        std::string("bssid\nab\0cd\n", 12) + "02:01\t[WPA2-PSK-CCMP]\thome\n";
    EXPECT_THAT(shown_for(broken),
                EndsWith("\nab\n02:01\t[WPA2-PSK-CCMP]\thome\nhomeis found...\n"));
    EXPECT_EQ(config_.scan_proto, "RSN");
}

TEST_F(ListingLines, are_searched_up_to_their_zero_byte) {
    supplicant_.answer("SCAN_RESULTS", {std::string("bssid\nab\0home\n", 14)});
    EXPECT_EQ(cmd_to_find_network(*session_, config_), 1);
}

TEST_F(ListingLines, hold_511_characters) {
    const std::string line = std::string(507, 'x') + "home\n";
    EXPECT_EQ(shown_for("bssid\n" + line), "bssid\n" + line + "homeis found...\n");
}

TEST_F(ListingLines, lose_what_is_behind_511_characters) {
    supplicant_.answer("SCAN_RESULTS", {"bssid\n" + std::string(508, 'x') + "home\n"});
    EXPECT_EQ(cmd_to_find_network(*session_, config_), 1);
    EXPECT_EQ(console_.out(), "bssid\n" + std::string(508, 'x') + "hom\nhomeis not found!!!\n");
}

TEST_F(ListingLines, need_no_newline_at_the_end) {
    EXPECT_EQ(shown_for("bssid\n02:01 home"), "bssid\n02:01 home\nhomeis found...\n");
}

} // namespace
} // namespace wivex

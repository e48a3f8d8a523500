// SPDX-License-Identifier: Apache-2.0
#include "console/recogniser.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using namespace wivex::report;

std::vector<std::string> texts_in(std::string_view line) {
    static Recogniser recogniser;
    std::vector<std::string> texts;
    for (const Match& match : recogniser.read(line)) {
        texts.emplace_back(match.row->text);
    }
    return texts;
}

TEST(Recogniser, finds_every_text_of_its_table_standing_alone) {
    for (const TextRow& row : console_texts()) {
        const std::string line =
            row.shape == Shape::inside ? "7" + std::string(row.text) + "x" : std::string(row.text);
        EXPECT_THAT(texts_in(line), testing::Contains(std::string(row.text))) << line;
    }
}

TEST(Recogniser, prefers_the_longer_of_two_texts) {
    EXPECT_THAT(texts_in("[WIFI]SCAN SUCCESS"), ElementsAre("[WIFI]SCAN SUCCESS"));
    EXPECT_THAT(texts_in("[WIFI]SCAN SUCCESS AND RUN IN SHIELD ROOM"),
                ElementsAre("[WIFI]SCAN SUCCESS AND RUN IN SHIELD ROOM"));
    EXPECT_THAT(texts_in("DISABLE_NETWORK Command is  not successful"),
                ElementsAre("DISABLE_NETWORK Command is "));
}

TEST(Recogniser, hands_out_what_follows_a_text) {
    Recogniser recogniser;
    const auto matches = recogniser.read("[WIFI]Chip type is = 5");
    ASSERT_EQ(matches.size(), 1U);
    EXPECT_EQ(matches[0].argument, "5");
}

TEST(Recogniser, finds_two_texts_in_a_line_when_the_first_has_no_newline) {
    EXPECT_THAT(texts_in("Failed to send P2P_CONNECT command to wpa_supplicantCONNECT:TEST CASE "
                         "FAIL"),
                ElementsAre("Failed to send P2P_CONNECT command to wpa_supplicant",
                            "CONNECT:TEST CASE FAIL"));
    EXPECT_THAT(texts_in("Scan returning FAIL-BUSYFail to send Scan Command!!!"),
                ElementsAre("Scan returning FAIL-BUSY", "Fail to send Scan Command!!!"));
}

TEST(Recogniser, tells_apart_texts_that_differ_only_in_case) {
    EXPECT_THAT(texts_in("P2P FIND Fail "), ElementsAre("P2P FIND Fail"));
    EXPECT_THAT(texts_in("P2P FIND FAIL "), ElementsAre("P2P FIND FAIL"));
}

TEST(Recogniser, finds_a_text_behind_the_cut_off_output_of_a_child) {
    EXPECT_THAT(texts_in("[  3]  1.0- 2.0 sec  11.2 MByERROR:SCAN FAIL-BUSY"),
                ElementsAre("ERROR:SCAN FAIL-BUSY"));
    EXPECT_THAT(texts_in("udhcpc: sen[WIFI]Chip type is = 3"),
                ElementsAre("[WIFI]Chip type is = "));
}

TEST(Recogniser, finds_a_text_behind_binary_noise) {
    EXPECT_THAT(texts_in(std::string("\xff\x00\x01", 3) + "[WIFI]SCAN FAIL"),
                ElementsAre("[WIFI]SCAN FAIL"));
}

TEST(Recogniser, does_not_believe_texts_in_events_listings_and_replies) {
    EXPECT_THAT(texts_in("<3>CTRL-EVENT-SCAN ERROR:SCAN FAIL-BUSY"), IsEmpty());
    EXPECT_THAT(texts_in("02:00:00:00:02:00\t2462\t-71\t[ESS]\tERROR:SCAN FAIL-BUSY"), IsEmpty());
    EXPECT_THAT(texts_in("ssid=[WIFI]SCAN FAIL"), IsEmpty());
}

TEST(Recogniser, does_not_take_the_dashes_of_iperf_for_those_of_the_tool) {
    EXPECT_THAT(texts_in("------------------------------------------------------------"),
                IsEmpty());
}

TEST(Recogniser, does_not_take_a_longer_line_for_a_whole_one) {
    EXPECT_THAT(texts_in("GOOD"), IsEmpty());
    EXPECT_THAT(texts_in("clients"), IsEmpty());
    EXPECT_THAT(texts_in("unable to open sockets here"), IsEmpty());
}

} // namespace

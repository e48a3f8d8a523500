// SPDX-License-Identifier: Apache-2.0
#include "console_capture.hpp"
#include "diag/loopback_qca_combo.hpp"

#include <gtest/gtest.h>

#include <cstring>
#include <span>
#include <string_view>
#include <vector>

namespace {

using wivex::find_private_ioctl;
using wivex::LoopbackCounts;
using wivex::parse_loopback_answer;

iw_priv_args entry(std::string_view name) {
    iw_priv_args result{};
    name.copy(result.name, sizeof(result.name));
    return result;
}

TEST(PrivateIoctlSearch, finds_the_first_of_several_matches) {
    const std::vector<iw_priv_args> table{entry("setmode"), entry("getusbcontx"),
                                          entry("getusbcontx")};
    EXPECT_EQ(1U, find_private_ioctl(table, "getusbcontx"));
}

TEST(PrivateIoctlSearch, takes_a_longer_name_that_begins_alike) {
    const std::vector<iw_priv_args> table{entry("getusbcontx2")};
    EXPECT_EQ(0U, find_private_ioctl(table, "getusbcontx"));
}

TEST(PrivateIoctlSearch, passes_over_a_shorter_name) {
    const std::vector<iw_priv_args> table{entry("getusbcont")};
    EXPECT_EQ(1U, find_private_ioctl(table, "getusbcontx"));
}

TEST(PrivateIoctlSearch, ends_at_the_end_of_the_table) {
    const std::vector<iw_priv_args> table(3, entry("other"));
    EXPECT_EQ(3U, find_private_ioctl(table, "getusbcontx"));
    EXPECT_EQ(0U, find_private_ioctl({}, "getusbcontx"));
}

TEST(PrivateIoctlSearch, reads_no_further_than_a_name_without_terminator) {
    const std::vector<iw_priv_args> table{entry("getusbcontx_4567"), entry("x")};
    EXPECT_EQ(0U, find_private_ioctl(table, "getusbcontx_4567"));
    EXPECT_EQ(2U, find_private_ioctl(table, "getusbcontx_4567x"));
}

TEST(PrivateIoctlSearch, takes_no_number_from_behind_the_table) {
    const wivex::test_support::ConsoleCapture console;
    std::vector<iw_priv_args> entries{entry("other"), entry("getusbcontx")};
    entries[1].cmd = 56;
    EXPECT_EQ(-1,
              wivex::qca_combo_loopback(-1, "getusbcontx", "wlan0", std::span(entries).first<1>()));
}

void expect_counts(int total, int sequence_errors, int content_errors, const char* answer) {
    const LoopbackCounts counts = parse_loopback_answer(answer);
    EXPECT_EQ(total, counts.total);
    EXPECT_EQ(sequence_errors, counts.sequence_errors);
    EXPECT_EQ(content_errors, counts.content_errors);
}

TEST(LoopbackAnswer, gives_three_counts) {
    expect_counts(100, 2, 3, "total 100 seq_err 2 content_err 3");
    expect_counts(100, 2, 3, "\n total 100\nseq_err 2\tcontent_err 3\n");
}

TEST(LoopbackAnswer, keeps_0_for_what_it_does_not_contain) {
    expect_counts(100, 2, 0, "total 100 seq_err 2 content");
    expect_counts(100, 0, 0, "total 100, seq_err 2");
    expect_counts(0, 0, 0, "Total 100 seq_err 2 content_err 3");
    expect_counts(0, 0, 0, "");
}

} // namespace

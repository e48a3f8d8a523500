// SPDX-License-Identifier: Apache-2.0
#include "modes/ap_status_file.hpp"
#include "process_fixture.hpp"

#include <gtest/gtest.h>

#include <cerrno>
#include <string>

namespace wivex {
namespace {

class ApStatusFile : public test_support::ProcessFixture {
protected:
    /// Reads a status file with this content.
    StatusFileRead read(const std::string& content) {
        return read_status_file(directory_.file("status", content), Links::follow, known_);
    }

    StatusTable known_;
};

TEST_F(ApStatusFile, gives_an_access_point_that_is_not_seen_yet_and_has_no_signal) {
    read("02:00:00:00:01:0A/-40.00/0/LINE-AP-1\n");
    ASSERT_EQ(known_.size(), 1U);
    EXPECT_EQ(known_.all()[0].bssid.view(), "02:00:00:00:01:0A");
    EXPECT_EQ(known_.all()[0].ssid.view(), "LINE-AP-1");
    EXPECT_EQ(known_.all()[0].status, 1);
    EXPECT_EQ(known_.all()[0].signal.view(), "0");
}

TEST_F(ApStatusFile, ends_at_a_line_of_fewer_than_6_characters) {
    read("//0/A\n//0/\n//0/B\n");
    ASSERT_EQ(known_.size(), 1U);
    EXPECT_EQ(known_.all()[0].ssid.view(), "A");
}

TEST_F(ApStatusFile, goes_on_behind_499_characters_as_on_the_next_line) {
    read("02:00:00:00:01:0A/" + std::string(481, '4') + "//0/NAME\n");
    ASSERT_EQ(known_.size(), 2U);
    EXPECT_EQ(known_.all()[1].ssid.view(), "NAME");
}

TEST_F(ApStatusFile, says_nothing_more_on_a_line_behind_an_apostrophe) {
    read("02:00:00:00:01:0A's/-40.00/0/NAME\n");
    ASSERT_EQ(known_.size(), 1U);
    EXPECT_EQ(known_.all()[0].bssid.view(), "02:00:00:00:01:0A");
    EXPECT_EQ(known_.all()[0].ssid.view(), "");
}

TEST_F(ApStatusFile, that_is_a_folder_counts_as_one_without_lines) {
    const StatusFileRead folder = read_status_file(directory_.path(), Links::follow, known_);
    EXPECT_TRUE(folder.opened);
    EXPECT_EQ(folder.error, 0);
    EXPECT_TRUE(known_.empty());
}

TEST_F(ApStatusFile, that_is_missing_is_not_opened) {
    const StatusFileRead missing = read_status_file(directory_ / "missing", Links::follow, known_);
    EXPECT_FALSE(missing.opened);
    EXPECT_EQ(missing.error, ENOENT);
}

} // namespace
} // namespace wivex

// SPDX-License-Identifier: Apache-2.0
#include "run/mode_table.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace wivex {
namespace {

using namespace testing;

std::string document(const std::string& name) {
    std::ostringstream text;
    text << std::ifstream(DOCUMENTS "/" + name).rdbuf();
    return text.str();
}

const ModeRow& row_of(char letter) {
    const auto rows = mode_table();
    return *std::find_if(rows.begin(), rows.end(),
                         [letter](const ModeRow& row) { return row.letter == letter; });
}

TEST(ModeTable, names_each_test_case_as_the_documents_do) {
    const std::string documents = document("failure-codes.md");
    for (const ModeRow& row : mode_table()) {
        if (row.test_case >= 0) {
            EXPECT_THAT(documents, HasSubstr("\n## Test case " + std::to_string(row.test_case + 1) +
                                             ": " + row.title + " (`-" + row.letter + "`)\n"));
        }
    }
}

TEST(ModeTable, has_no_record_for_a_softap_and_names_it_as_its_verdict_does) {
    const ModeRow& softap = row_of('A');
    EXPECT_EQ(softap.test_case, -1);
    EXPECT_THAT(document("man/wivex.1"),
                HasSubstr(std::string("\n.Qq ") + softap.title + " created successfuly\n"));
}

TEST(ModeTable, gives_every_letter_a_flag_of_its_own) {
    for (const ModeRow& row : mode_table()) {
        RunOptions options;
        options.*(row.chosen) = 1;
        int chosen = 0;
        for (const ModeRow& other : mode_table()) {
            chosen += options.*(other.chosen);
        }
        EXPECT_EQ(chosen, 1) << row.letter;
    }
}

// Of two chosen scripts the first runs. A further mode shows its place in a test of its own.
TEST(ModeTable, keeps_the_order_of_its_scripts) {
    std::string letters;
    for (const ModeRow& row : mode_table()) {
        if (std::string_view("cdgw").find(row.letter) != std::string_view::npos) {
            letters += row.letter;
        }
    }
    EXPECT_EQ(letters, "dgwc");
}

TEST(ModeTable, lets_10_seconds_pass_behind_a_failure_to_find_or_join_a_peer) {
    EXPECT_EQ(row_of('d').script->pause_after_failure, 10);
    EXPECT_EQ(row_of('c').script->pause_after_failure, 10);
    EXPECT_EQ(row_of('g').script->pause_after_failure, 0);
    EXPECT_EQ(row_of('w').script->pause_after_failure, 0);
}

TEST(ModeTable, lists_the_codes_that_a_result_file_counts) {
    std::map<char, std::vector<ErrorCode>> codes;
    for (const ModeRow& row : mode_table()) {
        if (row.script != nullptr) {
            codes[row.letter].assign(row.script->recorded.begin(), row.script->recorded.end());
        }
    }
    EXPECT_THAT(codes['d'], ::testing::UnorderedElementsAre(6, 26, 29, 21, 12, 14, 32, 10));
    EXPECT_THAT(codes['g'], ElementsAre(6, 26, 29, 21, 14, 32));
    EXPECT_THAT(codes['w'], ElementsAre(6, 6, 24, 9, 18, 19, 20, 21, 14, 22));
    EXPECT_THAT(codes['c'], ElementsAre(6, 26, 29, 21, 14, 32));
}

} // namespace
} // namespace wivex

// SPDX-License-Identifier: Apache-2.0
#include "console/line_splitter.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using testing::ElementsAre;
using wivex::report::LineSplitter;
using wivex::report::longest_line;

std::vector<std::string> split(const std::vector<std::string>& chunks, bool finish = true) {
    std::vector<std::string> lines;
    const auto take = [&](std::string_view line) { lines.emplace_back(line); };
    LineSplitter splitter;
    for (const std::string& chunk : chunks) {
        splitter.feed(chunk, take);
    }
    if (finish) {
        splitter.finish(take);
    }
    return lines;
}

TEST(LineSplitter, hands_out_complete_lines_without_their_newline) {
    EXPECT_THAT(split({"one\ntwo\n\nthree\n"}), ElementsAre("one", "two", "", "three"));
}

TEST(LineSplitter, joins_a_line_that_comes_in_pieces) {
    EXPECT_THAT(split({"o", "ne\nt", "", "wo", "\n"}), ElementsAre("one", "two"));
}

TEST(LineSplitter, drops_the_carriage_returns_of_a_serial_line) {
    EXPECT_THAT(split({"one\r\ntwo\r", "\nthr\ree\r\r\n"}), ElementsAre("one", "two", "thr\ree"));
}

TEST(LineSplitter, hands_out_a_cut_off_last_line_only_at_the_end) {
    EXPECT_THAT(split({"one\ntw"}, false), ElementsAre("one"));
    EXPECT_THAT(split({"one\ntw"}), ElementsAre("one", "tw"));
}

TEST(LineSplitter, keeps_zero_bytes) {
    EXPECT_THAT(split({std::string("a\0b\n", 4)}), ElementsAre(std::string("a\0b", 3)));
}

TEST(LineSplitter, cuts_a_line_without_end_into_pieces) {
    const std::string endless(2 * longest_line + 10, 'x');
    const auto lines = split({endless.substr(0, 5000), endless.substr(5000), "\nnext\n"});
    ASSERT_EQ(lines.size(), 4U);
    EXPECT_EQ(lines[0].size(), longest_line);
    EXPECT_EQ(lines[1].size(), longest_line);
    EXPECT_EQ(lines[2].size(), 10U);
    EXPECT_EQ(lines[3], "next");
}

TEST(LineSplitter, hands_out_the_same_lines_however_the_bytes_come) {
    const std::string text = "a\n\nbb\r\nccc\n" + std::string(longest_line + 3, 'd') + "\ne";
    const auto whole = split({text});
    for (std::size_t size = 1; size < 40; ++size) {
        std::vector<std::string> chunks;
        for (std::size_t at = 0; at < text.size(); at += size) {
            chunks.push_back(text.substr(at, size));
        }
        EXPECT_EQ(split(chunks), whole) << "in chunks of " << size;
    }
}

} // namespace

// SPDX-License-Identifier: Apache-2.0
// The owner of one descriptor.

#include "common/unique_fd.hpp"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <utility>

namespace {

using wivex::UniqueFd;

int new_descriptor() {
    return open("/dev/null", O_RDONLY | O_CLOEXEC);
}

bool is_open(int fd) {
    return fcntl(fd, F_GETFD) != -1;
}

TEST(UniqueFdOfNothing, has_no_descriptor) {
    const UniqueFd nothing;
    EXPECT_FALSE(nothing);
    EXPECT_EQ(nothing.get(), -1);
}

TEST(UniqueFdOfNothing, closes_nothing) {
    UniqueFd nothing;
    nothing.reset();
    EXPECT_FALSE(nothing);
}

TEST(UniqueFdOfOne, closes_it_at_the_end) {
    const int fd = new_descriptor();
    {
        const UniqueFd owner(fd);
        EXPECT_TRUE(owner);
        EXPECT_TRUE(is_open(fd));
    }
    EXPECT_FALSE(is_open(fd));
}

TEST(UniqueFdOfOne, leaves_open_what_it_gives_away) {
    UniqueFd owner(new_descriptor());
    const int fd = owner.release();
    EXPECT_FALSE(owner);
    EXPECT_EQ(owner.get(), -1);
    owner.reset();
    EXPECT_TRUE(is_open(fd));
    close(fd);
}

TEST(UniqueFdOfOne, closes_it_for_another_one) {
    const int first = new_descriptor();
    UniqueFd owner(first);
    const int second = new_descriptor();
    owner.reset(second);
    EXPECT_FALSE(is_open(first));
    EXPECT_EQ(owner.get(), second);
}

TEST(UniqueFdOfOne, has_none_when_it_has_closed_it) {
    UniqueFd owner(new_descriptor());
    owner.reset();
    EXPECT_EQ(owner.get(), -1);
}

TEST(UniqueFdOfOne, can_be_moved) {
    const int fd = new_descriptor();
    UniqueFd owner(fd);
    UniqueFd other;
    other = UniqueFd(std::move(owner));
    EXPECT_EQ(other.get(), fd);
    EXPECT_TRUE(is_open(fd));
}

// A tool that was started without standard input gets it for the first file that it opens.
TEST(UniqueFdOfNumberZero, closes_it_too) {
    const UniqueFd standard_input(dup(STDIN_FILENO));
    {
        const UniqueFd owner(STDIN_FILENO);
        EXPECT_TRUE(owner);
    }
    EXPECT_FALSE(is_open(STDIN_FILENO));
    dup2(standard_input.get(), STDIN_FILENO);
}

} // namespace

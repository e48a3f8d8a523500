// SPDX-License-Identifier: Apache-2.0
// A child that could not be made interruptible is not started at all.

#include "common/shell.hpp"

#include <gtest/gtest.h>
#include <spawn.h>

#include <cerrno>

namespace {

bool out_of_memory = false;

} // namespace

// Stands in front of the C library's own for the whole program.
extern "C" int posix_spawnattr_setsigmask(posix_spawnattr_t* attributes,
                                          const sigset_t* mask) noexcept {
    if (out_of_memory) {
        return ENOMEM;
    }
    attributes->__ss = *mask;
    return 0;
}

namespace wivex {
namespace {

class SpawnAttributesMissing : public ::testing::Test {
protected:
    void SetUp() override {
        out_of_memory = true;
    }
    void TearDown() override {
        out_of_memory = false;
    }
};

TEST_F(SpawnAttributesMissing, is_reported_like_any_child_that_cannot_be_started) {
    EXPECT_EQ(run_shell("exit 0"), -1);
    EXPECT_EQ(read_from_shell("echo text", 10), std::nullopt);
}

} // namespace
} // namespace wivex

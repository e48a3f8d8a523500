// SPDX-License-Identifier: Apache-2.0
#include "children.hpp"
#include "console_capture.hpp"
#include "diag/private_ioctls.hpp"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <array>
#include <memory>
#include <new>
#include <utility>
#include <vector>

namespace wivex {
namespace {

using namespace test_support;

constexpr int no_socket = -1;

TEST(PrivateIoctls, that_cannot_be_asked_for_leave_an_empty_table) {
    std::vector<iw_priv_args> table(3);
    EXPECT_EQ(get_priv_ioctls(no_socket, "wlan0", table), -1);
    EXPECT_TRUE(table.empty());
}

/// As large as the first table.
struct Block {
    std::unique_ptr<Block> before;
    std::array<char, 16 * sizeof(iw_priv_args) - sizeof(before)> rest{};
};

/// Takes what memory the process has, and lets it have no more. A limit that is not kept fails the
/// test instead of the machine.
void use_up_memory() {
    constexpr int most_blocks = 1'000'000;
    static std::unique_ptr<Block> last;
    rlimit limit{};
    ::getrlimit(RLIMIT_AS, &limit);
    limit.rlim_cur = 1;
    ::setrlimit(RLIMIT_AS, &limit);
    for (int count = 0; count < most_blocks; ++count) {
        std::unique_ptr<Block> block(new (std::nothrow) Block);
        if (block == nullptr) {
            return;
        }
        block->before = std::move(last);
        last = std::move(block);
    }
}

TEST(WithoutMemory, private_requests_are_told_to_be_missing) {
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer ends a process without memory";
#endif
    ConsoleCapture console;
    const int child = fork_child([] {
        std::vector<iw_priv_args> table;
        use_up_memory();
        return get_priv_ioctls(no_socket, "wlan0", table) == -1 ? 0 : 1;
    });
    EXPECT_EQ(end_of_child(child, milliseconds(5000)), 0);
    EXPECT_EQ(console.err(), "get_priv_ioctls: memory reallocation failed\n");
}

} // namespace
} // namespace wivex

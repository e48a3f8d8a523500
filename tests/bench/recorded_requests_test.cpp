// SPDX-License-Identifier: Apache-2.0
// The simulated driver gives back, byte by byte, what drivers in a real kernel gave back to the
// same requests: recorded on the emulated device, where the suite compares them with the kernel's
// again.

#include "bench_run.hpp"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>

namespace {

using namespace bench_test;
using namespace testing;

std::string recorded(const std::string& what) {
    const std::string width = sizeof(void*) == 4 ? "32-bit" : "64-bit";
    const std::ifstream file(RECORDED_FOLDER "/" + width + "/" + what);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

class RecordedRequests : public TestWithParam<const char*> {};

TEST_P(RecordedRequests, come_back_as_from_a_real_kernel) {
    const std::string what = GetParam();
    const BenchRun run =
        Bench("real-kernel/" + what).option("--tool", ASKING_TOOL).args({what}).run();
    EXPECT_EQ(0, run.status) << run.err;
    EXPECT_NE("", run.out);
    EXPECT_EQ(recorded(what), run.out);
}

INSTANTIATE_TEST_SUITE_P(Kinds, RecordedRequests, Values("variables", "commands", "long-command"));

} // namespace

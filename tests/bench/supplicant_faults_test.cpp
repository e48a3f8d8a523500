// SPDX-License-Identifier: Apache-2.0
// A supplicant in trouble, in every mode that talks to it: each fault has its verdict.

#include "bench_run.hpp"
#include "expected.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace bench_test {
namespace {

using namespace testing;

/// What two iterations of each mode file under a fault; 0 is a pass.
struct Fault {
    const char* scenario;
    int wlan;
    int client;
    int device;
};

void PrintTo(const Fault& fault, std::ostream* out) {
    *out << fault.scenario;
}

// A second either side of a time limit must stay long enough for a busy machine.
constexpr int speed = 5;

BenchRun run_mode(const std::string& scenario, const std::string& mode) {
    return Bench(scenario).line(quick_address).faster(speed).args({mode, "-m", "2"}).run();
}

class SupplicantFault : public testing::TestWithParam<Fault> {
protected:
    static void expect_verdict(const std::string& mode, int test_case, int failures) {
        const BenchRun run = run_mode(GetParam().scenario, mode);
        EXPECT_EQ(run.status, 0);
        EXPECT_EQ(run.result_file(), result_of(test_case, failures));
        EXPECT_THAT(run.out, HasSubstr("[WIFI]ResultFile: /root/WIFIResult Updated\n"));
    }
};

TEST_P(SupplicantFault, has_its_verdict_in_the_wlan_test) {
    expect_verdict("-w", 8, GetParam().wlan);
}

TEST_P(SupplicantFault, has_its_verdict_in_the_p2p_client_test) {
    expect_verdict("-c", 9, GetParam().client);
}

TEST_P(SupplicantFault, has_its_verdict_in_the_p2p_device_test) {
    expect_verdict("-d", 6, GetParam().device);
}

// Where nobody can be reached any more, the second iteration of the WLAN test files its code twice.
INSTANTIATE_TEST_SUITE_P(All, SupplicantFault,
                         testing::Values(Fault{"supplicant-killed", 3, 2, 2},
                                         Fault{"supplicant-restarts", 1, 1, 1},
                                         Fault{"supplicant-stops-for-a-while", 0, 0, 0},
                                         Fault{"supplicant-stops-for-good", 3, 2, 2},
                                         Fault{"supplicant-floods", 0, 0, 0},
                                         Fault{"supplicant-sends-oversized", 0, 0, 0},
                                         Fault{"supplicant-sends-nothing", 0, 0, 0},
                                         Fault{"supplicant-sends-binary", 0, 0, 0},
                                         Fault{"supplicant-answers-after-9-seconds", 0, 0, 0},
                                         Fault{"supplicant-answers-after-11-seconds", 2, 2, 2},
                                         Fault{"supplicant-answers-twice", 2, 2, 2}),
                         [](const auto& fault) {
                             std::string name = fault.param.scenario;
                             for (char& letter : name) {
                                 letter = letter == '-' ? '_' : letter;
                             }
                             return name;
                         });

// ---- the group owner, which only an interrupt ends ---------------------------------------------

class TroubledGroupOwner : public testing::TestWithParam<const char*> {};

TEST_P(TroubledGroupOwner, can_be_interrupted_and_leaves_its_results) {
    const BenchRun run = Bench(GetParam())
                             .line("program killall runs \"exit 0\"")
                             .line("program udhcpd runs \"exit 0\"")
                             .signal("INT@3000ms")
                             .args({"-g", "-m", "2"})
                             .run();
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.result_file(), result_of(7, 0));
    EXPECT_THAT(run.sockets(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(All, TroubledGroupOwner,
                         testing::Values("supplicant-killed", "go-session-lost",
                                         "supplicant-sends-oversized", "supplicant-sends-nothing",
                                         "supplicant-sends-binary"));

// ---- one answer too many -----------------------------------------------------------------------

TEST(SupplicantThatAnswersTwice, is_taken_at_its_word_for_the_next_command) {
    const BenchRun run = run_mode("supplicant-answers-twice", "-w");
    // The listing that was asked for is read as the answer to a command that is never sent.
    EXPECT_THAT(run.out, HasSubstr("Fail to send Scan_Results Command!!!\n"));
    EXPECT_EQ(run.commands(),
              (std::vector<std::string>{"SCAN", "SCAN_RESULTS", "SCAN", "SCAN_RESULTS"}));
}

} // namespace
} // namespace bench_test

// SPDX-License-Identifier: Apache-2.0
// Steps of the P2P client test (-c) and of the P2P device test (-d) that fail: what is recorded and
// what the console tells.

#include "bench_run.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace bench_test {
namespace {

using namespace testing;

struct FailedStep {
    const char* name;
    const char* mode;
    const char* scenario;
    /// What stands on the two streams, among other things.
    const char* out;
    const char* err = "";
    /// How long the step is waited for; the clock of the bench is 20 times faster.
    double at_least_ms = 0;
    /// The last command, where it matters.
    const char* last_command = nullptr;
};

void PrintTo(const FailedStep& step, std::ostream* out) {
    *out << step.mode << " " << step.scenario;
}

class FailedP2pStep : public TestWithParam<FailedStep> {};

TEST_P(FailedP2pStep, is_recorded_once_and_told) {
    const BenchRun run = run_quickly(Bench(GetParam().scenario), GetParam().mode);
    const bool client = GetParam().mode == std::string("-c");
    EXPECT_EQ(run.result_file(),
              client ? "Test case 1 passed \nTest case 2 passed \nTest case 9 fail # 1\n"
                     : "Test case 1 passed \nTest case 2 passed \nTest case 6 fail # 1\n");
    EXPECT_THAT(run.out, HasSubstr(GetParam().out));
    EXPECT_THAT(run.err, HasSubstr(GetParam().err));
    EXPECT_GE(run.wall_ms, GetParam().at_least_ms);
    if (GetParam().last_command != nullptr) {
        EXPECT_EQ(run.commands().back(), GetParam().last_command);
    }
}

constexpr const char* removal = "P2P_GROUP_REMOVE wlan0";

INSTANTIATE_TEST_SUITE_P(
    Client, FailedP2pStep,
    Values(FailedStep{"code_6_once_when_there_is_no_supplicant", "-c", "supplicant-absent",
                      "[WIFI]Unable to open sockets!!\n"},
           FailedStep{"code_26_when_the_search_fails", "-c", "p2p-find-refused",
                      "P2P FIND FAIL \n"},
           FailedStep{"code_29_and_the_group_is_removed_when_the_join_is_refused", "-c",
                      "p2p-connect-refused",
                      "Failed to send P2P_CONNECT command to wpa_supplicant"
                      "CONNECT:TEST CASE FAIL\n",
                      "", 0, removal},
           FailedStep{"code_29_and_the_group_is_removed_when_the_join_takes_60_seconds", "-c",
                      "p2p-join-never-connects", "CONNECT:TEST CASE FAIL\n", "", 2900, removal},
           FailedStep{"code_32_when_the_group_cannot_be_removed", "-c", "p2p-removal-refused",
                      "Failed to send P2P_GROUP_REMOVE command to wpa_supplicant"
                      "disconnect:TEST CASE FAIL\n"}),
    [](const auto& step) { return step.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Device, FailedP2pStep,
    Values(FailedStep{"code_6_once_when_there_is_no_supplicant", "-d", "supplicant-absent",
                      "[WIFI]Unable to open sockets!!\n", "unable to open sockets\n"},
           FailedStep{"code_26_when_the_search_is_refused", "-d", "p2p-find-refused",
                      "Failed to send P2P_FIND command to wpa_supplicantFAIL\n\n"
                      "P2P FIND Fail \n"},
           FailedStep{"code_26_when_the_answer_to_the_search_is_not_ok", "-d",
                      "p2p-find-without-ok", "FAILED:P2P_FIND\nP2P FIND Fail \n"},
           FailedStep{"code_26_when_the_peer_is_not_found_in_60_seconds", "-d",
                      "p2p-peer-never-found", "P2P FIND: TIME OUT !!\nP2P FIND Fail \n", "", 2900},
           FailedStep{"code_29_when_the_connect_is_refused", "-d", "p2p-connect-refused",
                      "FAIL\n\nFailed to send P2P_CONNECT command to wpa_supplicant\n"
                      "connect:TEST CASE FAIL\n"},
           FailedStep{"code_10_when_no_group_starts_in_30_seconds", "-d", "p2p-group-never-starts",
                      "", "Unable to recieve P2P-GROUP-STARTED event.\n"},
           FailedStep{"code_10_when_a_group_of_neither_role_is_waited_past", "-d",
                      "p2p-group-of-neither-role",
                      "[WIFI]Testing for client\n[WIFI]Testing for GO\n"}),
    [](const auto& step) { return step.param.name; });

} // namespace
} // namespace bench_test

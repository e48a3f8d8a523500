// SPDX-License-Identifier: Apache-2.0
#include "common/process_state.hpp"
#include "process_fixture.hpp"
#include "run/results.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

namespace wivex {
namespace {

using namespace test_support;
using namespace testing;

std::vector<ErrorCode> codes_of(const TestCaseResult& result) {
    std::vector<ErrorCode> codes;
    for (const auto& [code, entry] : result.failures) {
        codes.push_back(code);
    }
    return codes;
}

TEST(ErrorCodeTexts, stand_to_the_letter) {
    EXPECT_THAT(
        error_code_texts,
        ElementsAre("passed", "Module not connected", "WIFI driver not ready", "WIFI iface not up",
                    "WIFI Scan failed", "ctrl_iface open failed", "ctrl_iface attach failed",
                    "Get scan result failed", "p2p group start failed", "dhcpd start failed",
                    "IPERF server start  failed", "IPERf client start failed",
                    "configuration file missing", "test case fail", "add network command failed",
                    "set network command failed", "select network command failed", "UDHCHPC failed",
                    "disable network command failed", "remove network command failed",
                    "Get scan result failed", "p2p_find command failed",
                    "p2p_stop_find command failed", "p2p_listen command failed",
                    "p2p_connect command failed", "p2p_group_add command failed",
                    "p2p_group_remove command failed", "p2p_disconnect command failed",
                    "ping command failed", "Loopback failed", "CFG File Error",
                    " Failure due to unknown reason"));
}

TEST(EnableTestCase, creates_an_empty_entry_for_every_code_but_4) {
    TestCaseResults results;
    enable_test_case(results, test_case::legacy_wlan);
    EXPECT_EQ(results[7].enabled, 1);
    EXPECT_THAT(codes_of(results[7]),
                ElementsAre(0, 1, 2, 3, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20,
                            21, 22, 23, 24, 25, 26, 27, 28, 29, 30, 31, 32, 33));
    for (const auto& [code, entry] : results[7].failures) {
        EXPECT_EQ(entry.count, 0);
        EXPECT_THAT(entry.iterations, IsEmpty());
    }
}

TEST(EnableTestCase, leaves_the_other_test_cases_alone) {
    TestCaseResults results;
    enable_test_case(results, test_case::driver);
    for (std::size_t index = 0; index < results.size(); ++index) {
        EXPECT_EQ(results[index].enabled, index == 1 ? 1 : 0);
    }
    EXPECT_THAT(results[0].failures, IsEmpty());
}

TEST(EnableTestCase, clears_what_was_recorded_when_called_again) {
    TestCaseResults results;
    enable_test_case(results, test_case::legacy_wlan);
    record_test_case(results, test_case::legacy_wlan, 14, 3);
    enable_test_case(results, test_case::legacy_wlan);
    EXPECT_EQ(results[7].failures.at(14).count, 0);
    EXPECT_THAT(results[7].failures.at(14).iterations, IsEmpty());
    EXPECT_EQ(results[7].enabled, 1);
}

struct CheckCode {
    ErrorCode code;
    std::size_t index;
};

void PrintTo(const CheckCode& check, std::ostream* out) {
    *out << check.code;
}

class CodeOfACheck : public ::testing::TestWithParam<CheckCode> {};

TEST_P(CodeOfACheck, is_filed_under_its_test_case) {
    TestCaseResults results;
    record_failure(results, GetParam().code, 5);
    record_failure(results, GetParam().code, 9);
    for (std::size_t index = 0; index < results.size(); ++index) {
        SCOPED_TRACE(index);
        if (index == GetParam().index) {
            ASSERT_THAT(codes_of(results[index]), ElementsAre(GetParam().code));
            const auto& entry = results[index].failures.at(GetParam().code);
            EXPECT_THAT(entry.iterations, ElementsAre(5, 9));
            EXPECT_EQ(entry.count, 2);
        } else {
            EXPECT_THAT(results[index].failures, IsEmpty());
        }
        EXPECT_EQ(results[index].enabled, 0);
    }
}

INSTANTIATE_TEST_SUITE_P(Codes, CodeOfACheck,
                         ::testing::Values(CheckCode{1, 0}, CheckCode{2, 1}, CheckCode{3, 1},
                                           CheckCode{4, 2}, CheckCode{5, 3}, CheckCode{6, 4},
                                           CheckCode{7, 4}, CheckCode{8, 4}, CheckCode{9, 4}),
                         [](const auto& code) {
                             return "code_" + std::to_string(code.param.code);
                         });

TEST(RecordFailure, ignores_every_other_code) {
    TestCaseResults results;
    for (const ErrorCode code : {-1, 0, 10, 14, 33, 1000}) {
        record_failure(results, code, 1);
    }
    for (const auto& result : results) {
        EXPECT_THAT(result.failures, IsEmpty());
    }
}

TEST(RecordFailure, creates_the_entry_of_code_4_that_enabling_leaves_out) {
    TestCaseResults results;
    enable_test_case(results, test_case::mac_address);
    record_failure(results, 4, 2);
    EXPECT_THAT(results[2].failures.at(4).iterations, ElementsAre(2));
}

TEST(RecordTestCase, files_under_the_given_index) {
    for (int index = 5; index <= 9; ++index) {
        TestCaseResults results;
        record_test_case(results, index, 14, 4);
        const auto& entry = results.at(static_cast<std::size_t>(index)).failures.at(14);
        EXPECT_THAT(entry.iterations, ElementsAre(4));
        EXPECT_EQ(entry.count, 1);
    }
}

TEST(RecordTestCase, keeps_duplicates_in_the_order_of_recording) {
    TestCaseResults results;
    for (const std::uint32_t iteration : {3U, 1U, 3U}) {
        record_test_case(results, test_case::p2p_client, 6, iteration);
    }
    EXPECT_THAT(results[8].failures.at(6).iterations, ElementsAre(3, 1, 3));
    EXPECT_EQ(results[8].failures.at(6).count, 3);
}

TEST(RecordTestCase, ignores_every_other_index) {
    TestCaseResults results;
    for (const int index : {-1, 0, 1, 2, 3, 4, 10, 11, 1000}) {
        record_test_case(results, index, 14, 1);
    }
    for (const auto& result : results) {
        EXPECT_THAT(result.failures, IsEmpty());
    }
}

class ResultFile : public ProcessFixture {
protected:
    void SetUp() override {
        ProcessFixture::SetUp();
        run_options.result_file = directory_ / "result";
        enable_test_case(results_, test_case::module);
        enable_test_case(results_, test_case::driver);
    }

    std::string written() {
        write_result_file(results_, run_options.result_file, stream_);
        return read_file(run_options.result_file);
    }

    TestCaseResults results_;
    ResultStream stream_;
};

TEST_F(ResultFile, has_a_line_for_each_enabled_test_case) {
    enable_test_case(results_, test_case::legacy_wlan);
    EXPECT_EQ(written(), "Test case 1 passed \nTest case 2 passed \nTest case 8 passed \n");
}

TEST_F(ResultFile, lists_all_nine_test_cases_in_their_order) {
    for (const int index : {8, 3, 5, 7, 2, 6, 4}) {
        enable_test_case(results_, index);
    }
    EXPECT_EQ(written(), "Test case 1 passed \nTest case 2 passed \nTest case 3 passed \n"
                         "Test case 4 passed \nTest case 5 passed \nTest case 6 passed \n"
                         "Test case 7 passed \nTest case 8 passed \nTest case 9 passed \n");
}

TEST_F(ResultFile, counts_failures) {
    enable_test_case(results_, test_case::legacy_wlan);
    record_test_case(results_, test_case::legacy_wlan, 0, 1);
    record_test_case(results_, test_case::legacy_wlan, 14, 1);
    record_test_case(results_, test_case::legacy_wlan, 0, 1);
    record_failure(results_, 1, 2);
    EXPECT_EQ(written(), "Test case 1 fail # 1\nTest case 2 passed \nTest case 8 fail # 1\n");
}

TEST_F(ResultFile, does_not_count_passes) {
    enable_test_case(results_, test_case::legacy_wlan);
    for (int pass = 0; pass < 3; ++pass) {
        record_test_case(results_, test_case::legacy_wlan, 0, 1);
    }
    EXPECT_EQ(written(), "Test case 1 passed \nTest case 2 passed \nTest case 8 passed \n");
}

TEST_F(ResultFile, counts_records_and_not_failed_iterations) {
    enable_test_case(results_, test_case::legacy_wlan);
    record_test_case(results_, test_case::legacy_wlan, 6, 0);
    record_test_case(results_, test_case::legacy_wlan, 6, 0);
    record_test_case(results_, test_case::legacy_wlan, 22, 1);
    EXPECT_EQ(written(), "Test case 1 passed \nTest case 2 passed \nTest case 8 fail # 3\n");
}

TEST_F(ResultFile, counts_the_codes_of_one_test_case_together) {
    record_failure(results_, 2, 0);
    record_failure(results_, 3, 1);
    record_failure(results_, 3, 2);
    EXPECT_EQ(written(), "Test case 1 passed \nTest case 2 fail # 3\n");
}

TEST_F(ResultFile, leaves_out_what_was_recorded_in_a_disabled_test_case) {
    record_failure(results_, 4, 0);
    record_test_case(results_, test_case::p2p_device, 14, 0);
    EXPECT_EQ(written(), "Test case 1 passed \nTest case 2 passed \n");
}

TEST_F(ResultFile, counts_code_4_of_an_enabled_address_check) {
    enable_test_case(results_, test_case::mac_address);
    record_failure(results_, 4, 0);
    EXPECT_EQ(written(), "Test case 1 passed \nTest case 2 passed \nTest case 3 fail # 1\n");
}

TEST_F(ResultFile, is_announced_on_standard_output) {
    written();
    const std::string path = run_options.result_file;
    EXPECT_EQ(console_.out(),
              "[WIFI]user file name is " + path + "\n[WIFI]ResultFile: " + path + " Updated\n");
    EXPECT_EQ(console_.err(), "");
}

TEST_F(ResultFile, replaces_what_was_there) {
    directory_.file("result", std::string(1000, 'x'));
    EXPECT_EQ(written(), "Test case 1 passed \nTest case 2 passed \n");
}

TEST_F(ResultFile, is_closed_behind_the_writer_and_can_be_written_again) {
    written();
    EXPECT_FALSE(stream_.file);
    EXPECT_FALSE(stream_.failed);
    record_failure(results_, 1, 0);
    EXPECT_EQ(written(), "Test case 1 fail # 1\nTest case 2 passed \n");
}

TEST_F(ResultFile, that_cannot_be_opened_is_reported_on_two_streams) {
    run_options.result_file = directory_ / "absent/res";
    const std::string path = run_options.result_file;
    EXPECT_EQ(written(), "");
    EXPECT_EQ(console_.err(), "[WIFI]Unable to open Result File: ");
    EXPECT_EQ(console_.out(), "[WIFI]user file name is " + path + "\n" + path + "\n");
    EXPECT_TRUE(stream_.failed);
    EXPECT_FALSE(exists(directory_ / "absent"));
}

} // namespace
} // namespace wivex

// SPDX-License-Identifier: Apache-2.0
#include "children.hpp"
#include "common/process_state.hpp"
#include "legacy_wlan_fixture.hpp"
#include "run/results.hpp"
#include "run/run_loop.hpp"
#include "run/start.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <ostream>
#include <string>
#include <vector>

namespace wivex {
namespace {

using namespace test_support;
using namespace testing;

constexpr const char* checks_passed =
    "\n[WIFI]Chip type is = 1\n[WIFI]Chip vendor id = 0cf3 and product id 1022\n"
    "[WIFI]MODULE CONNECTED\n[WIFI]WIFI DRIVER READY\n";

class RunLoop : public LegacyWlanFixture {
protected:
    void SetUp() override {
        LegacyWlanFixture::SetUp();
        std::filesystem::create_directory(directory_ / "wlan0");
        directory_.file("wlan0/flags", "0x1003\n");
        config_.usbdevlist = directory_.file("devices", "P:  Vendor=0cf3 ProdID=1022 Rev= 0.01\n");
        config_.vendor_id = "0cf3";
        config_.wifidev = directory_.path();
        run_options.iteration_count = 1;
        run_options.wlan_legacy_mode = 1;
    }

    RunEnd run() {
        enable_chosen_test_cases();
        return run_loop(config_);
    }

    const FailureEntry& legacy(ErrorCode code) const {
        return run_options.results[7].failures.at(code);
    }

    std::int32_t legacy_records() const {
        std::int32_t sum = 0;
        for (const auto& [code, entry] : run_options.results[7].failures) {
            sum += entry.count;
        }
        return sum;
    }
};

// ---- checks ------------------------------------------------------------------------------------

TEST_F(RunLoop, begins_an_iteration_with_the_two_checks) {
    EXPECT_EQ(run(), RunEnd::finished);
    EXPECT_THAT(console_.out(),
                StartsWith(std::string(checks_passed) + "[WIFI]Unable to open sockets!!\n"));
    EXPECT_EQ(run_options.chip_type, 1);
}

TEST_F(RunLoop, records_an_absent_module_and_goes_on) {
    config_.usbdevlist = directory_ / "absent";
    run();
    EXPECT_EQ(console_.out(),
              "\n[WIFI]ERROR:Module not inserted. check Insmod [*].ko\n"
              "[WIFI]check usbfs: mount -t usbfs none /proc/bus/usb \n[WIFI]WIFI DRIVER READY\n"
              "[WIFI]Unable to open sockets!!\n");
    EXPECT_THAT(run_options.results[0].failures.at(1).iterations, ElementsAre(0));
}

TEST_F(RunLoop, records_a_missing_driver_and_goes_on) {
    config_.wifidev = directory_ / "absent";
    run();
    EXPECT_THAT(console_.out(), HasSubstr("[WIFI]ERROR:WiFi driver is not insmoded properly, "
                                          "Please check WiFi driver status...\n"
                                          "[WIFI]Unable to open sockets!!\n"));
    EXPECT_THAT(run_options.results[1].failures.at(2).iterations, ElementsAre(0));
    EXPECT_EQ(run_options.results[1].failures.at(3).count, 0);
}

TEST_F(RunLoop, records_an_interface_that_is_down_and_goes_on) {
    directory_.file("wlan0/flags", "0x1002\n");
    run();
    EXPECT_THAT(console_.out(),
                HasSubstr("[WIFI]ERROR:WiFi network interface not up(check supplicant)\n"
                          "[WIFI]Unable to open sockets!!\n"));
    EXPECT_THAT(run_options.results[1].failures.at(3).iterations, ElementsAre(0));
    EXPECT_EQ(run_options.results[1].failures.at(2).count, 0);
}

TEST_F(RunLoop, numbers_iterations_from_0) {
    config_.usbdevlist = directory_ / "absent";
    run_options.iteration_count = 3;
    run();
    EXPECT_THAT(run_options.results[0].failures.at(1).iterations, ElementsAre(0, 1, 2));
    EXPECT_THAT(legacy(6).iterations, ElementsAre(0, 0, 1, 1, 2, 2));
}

TEST_F(RunLoop, rests_2_seconds_after_every_iteration_also_the_last) {
    run_options.iteration_count = 2;
    // A busy machine can make a run longer, but hardly all of them.
    milliseconds shortest(60'000);
    for (int runs = 0; runs < 5 && shortest > milliseconds(5500); ++runs) {
        const Stopwatch watch;
        run();
        shortest = std::min(shortest, watch.elapsed());
    }
    EXPECT_THAT(shortest, AllOf(Ge(milliseconds(3990)), Le(milliseconds(5500))));
}

// ---- codes of the legacy WLAN test -------------------------------------------------------------

TEST_F(RunLoop, files_a_pass_as_code_0_with_iteration_1_whatever_the_counter) {
    start_supplicant();
    run_options.iteration_count = 3;
    run();
    EXPECT_THAT(legacy(0).iterations, ElementsAre(1, 1, 1));
    EXPECT_EQ(legacy_records(), 3);
}

TEST_F(RunLoop, files_code_6_twice) {
    run();
    EXPECT_THAT(legacy(6).iterations, ElementsAre(0, 0));
    EXPECT_EQ(legacy_records(), 2);
}

struct RefusedCommand {
    const char* name;
    const char* command;
    std::vector<std::string> replies;
    ErrorCode filed_as;
};

void PrintTo(const RefusedCommand& refused, std::ostream* out) {
    *out << refused.command;
}

class RefusedCommandOfTheLoop : public RunLoop, public WithParamInterface<RefusedCommand> {};

TEST_P(RefusedCommandOfTheLoop, is_filed_once) {
    start_supplicant();
    for (const std::string& reply : GetParam().replies) {
        supplicant_->answer(GetParam().command, {reply});
    }
    run();
    EXPECT_THAT(legacy(GetParam().filed_as).iterations, ElementsAre(0));
    EXPECT_EQ(legacy(8).count, 0); // a refused scan's own code is filed as 21
    EXPECT_EQ(legacy_records(), 1);
}

INSTANTIATE_TEST_SUITE_P(
    Codes, RefusedCommandOfTheLoop,
    Values(RefusedCommand{"code_8_as_21", "SCAN", {"FAIL\n"}, 21},
           RefusedCommand{
               "code_24", "SCAN", {"FAIL-BUSY\n", "FAIL-BUSY\n", "FAIL-BUSY\n", "FAIL\n"}, 24},
           RefusedCommand{"code_19", "SET_NETWORK 0 auth_alg OPEN", {"FAIL\n"}, 19},
           RefusedCommand{"code_22", "DISABLE_NETWORK 0 ", {"FAIL\n"}, 22}),
    [](const auto& refused) { return refused.param.name; });

TEST_F(RunLoop, files_code_9) {
    start_supplicant();
    config_.go_ssid = "away";
    run();
    EXPECT_THAT(legacy(9).iterations, ElementsAre(0));
    EXPECT_EQ(legacy_records(), 1);
}

TEST_F(RunLoop, files_code_14) {
    start_supplicant();
    config_.check_iperf = "yes";
    run_options.result_file = directory_ / "result";
    let_anybody_in();
    EXPECT_EQ(without_processes([this] {
                  run();
                  write_result_file(run_options.results, run_options.result_file,
                                    run_options.result_stream);
                  return 0;
              }),
              0);
    EXPECT_EQ(read_file(run_options.result_file),
              "Test case 1 passed \nTest case 2 passed \nTest case 8 fail # 1\n");
}

// ---- the address check -------------------------------------------------------------------------

TEST_F(RunLoop, looks_for_the_folder_of_its_files_in_the_first_99_characters_of_the_results_path) {
    run_options.mac_mode = 1;
    const std::string within = "/tmp/" + std::string(93, 'd') + "/";
    ASSERT_EQ(within.size(), 99U);
    run_options.result_file = within + "result";
    run();
    EXPECT_THAT(console_.out(), HasSubstr("[WIFI]Result file direcotry is " + within + "\n"));
    run_options.result_file = "/tmp/" + std::string(94, 'd') + "/result";
    run();
    EXPECT_THAT(console_.out(), HasSubstr("[WIFI]Result file direcotry is /tmp/\n"));
}

// ---- the choice of the mode --------------------------------------------------------------------

TEST_F(RunLoop, ends_a_softap_run_after_the_checks_of_the_first_iteration) {
    run_options.softap_mode = 1;
    run_options.iteration_count = 5;
    const Stopwatch watch;
    EXPECT_EQ(run(), RunEnd::softap);
    EXPECT_LT(watch.elapsed(), milliseconds(1500));
    EXPECT_EQ(console_.out(), std::string(checks_passed) + "[WIFI]ERROR:create softAP problem\n");
}

TEST_F(RunLoop, calls_a_softap_created_exactly_when_the_driver_check_fails) {
    run_options.softap_mode = 1;
    directory_.file("wlan0/flags", "0x1002\n");
    EXPECT_EQ(run(), RunEnd::softap);
    EXPECT_THAT(console_.out(), EndsWith("[WIFI]softAP created successfuly.\n"));
}

TEST_F(RunLoop, runs_only_the_first_of_several_modes) {
    run_options.p2p_device_mode = 1;
    run_options.p2p_client_mode = 1;
    run(); // the supplicant is absent
    EXPECT_THAT(run_options.results[5].failures.at(6).iterations, ElementsAre(0));
    EXPECT_EQ(legacy_records(), 0);
    EXPECT_EQ(run_options.results[7].enabled, 1);
    EXPECT_EQ(run_options.results[8].enabled, 1);
    EXPECT_EQ(run_options.results[8].failures.at(6).count, 0);
}

TEST_F(RunLoop, enables_the_records_of_the_chosen_modes_only) {
    run_options.p2p_client_mode = 1;
    enable_chosen_test_cases();
    for (std::size_t index = 0; index < run_options.results.size(); ++index) {
        const bool chosen = index == 0 || index == 1 || index == 7 || index == 8;
        EXPECT_EQ(run_options.results[index].enabled, chosen ? 1 : 0) << index;
    }
}

TEST_F(RunLoop, enables_no_record_for_softap_mode) {
    run_options.wlan_legacy_mode = 0;
    run_options.softap_mode = 1;
    enable_chosen_test_cases();
    for (std::size_t index = 0; index < run_options.results.size(); ++index) {
        EXPECT_EQ(run_options.results[index].enabled, index < 2 ? 1 : 0) << index;
    }
}

} // namespace
} // namespace wivex

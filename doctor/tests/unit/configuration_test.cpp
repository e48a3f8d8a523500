// SPDX-License-Identifier: Apache-2.0
// What the doctor says of the lines of a configuration file.
#include "checks.hpp"
#include "common/process_state.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <string>

namespace wivex::doctor {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::Field;
using testing::HasSubstr;
using testing::IsEmpty;

class Configuration : public testing::Test {
protected:
    Configuration() {
        std::string pattern = testing::TempDir() + "doctorXXXXXX";
        path_ = mkdtemp(pattern.data()) + std::string("/my.cfg");
    }

    // The configuration point of a run with this letter, on a device where all else is well.
    Point check(const std::string& text, char mode) {
        std::ofstream(path_) << text;
        run_options = RunOptions();
        run_options.config_choice = -1;
        run_options.user_config_file = path_;
        Request request;
        request.plan.mode = mode;
        const Facts facts = gather_facts(request);
        return check_configuration(facts, {module_, driver_, supplicant_});
    }

    static constexpr const char* good_ = "go_ssid=home\ngo_passphrase=long enough\n";
    std::string path_;
    Point module_{"module"};
    Point driver_{"driver"};
    Point supplicant_{"supplicant"};
};

auto remark(State state, const std::string& found) {
    return AllOf(Field(&Remark::state, state), Field(&Remark::found, HasSubstr(found)));
}

TEST_F(Configuration, that_is_right_has_no_remarks) {
    EXPECT_THAT(check(good_, 'w').remarks, IsEmpty());
}

TEST_F(Configuration, keys_that_no_mode_reads_are_only_told) {
    const Point point = check(std::string(good_) + "device_name=x\nssid=y\n", 'w');
    EXPECT_EQ(point.state(), State::good);
    EXPECT_THAT(point.remarks, Contains(remark(State::good, "no mode reads device_name, ssid")));
}

TEST_F(Configuration, a_blank_is_as_bad_as_what_comes_of_it) {
    EXPECT_EQ(check(std::string(good_) + "wifidev=/sys/class/net \n", 'w').state(), State::good);
    driver_.bad("not there", "[WIFI]ERROR:WiFi driver", "load it");
    const Point point = check(std::string(good_) + "wifidev=/sys/class/net \n", 'w');
    EXPECT_EQ(point.state(), State::bad);
    EXPECT_EQ(point.remarks.front().prints, "[WIFI]ERROR:WiFi driver");
    EXPECT_THAT(point.remarks.front().mend, HasSubstr("sed -i '3s/"));
}

TEST_F(Configuration, a_blank_in_a_name_is_never_green) {
    EXPECT_EQ(check("go_ssid=home \ngo_passphrase=long enough\n", 'w').state(), State::not_known);
}

TEST_F(Configuration, carriage_returns_are_one_remark) {
    const Point point = check("go_ssid=home\r\ngo_passphrase=long enough\r\n", 'w');
    EXPECT_EQ(point.state(), State::bad);
    EXPECT_EQ(point.remarks.size(), 1U);
    EXPECT_EQ(point.remarks.front().mend, "sed -i 's/\\r$//' " + path_);
}

TEST_F(Configuration, a_repeated_key_is_told_with_the_line_that_holds) {
    const Point point = check("go_ssid=one\n" + std::string(good_), 'w');
    EXPECT_THAT(point.remarks,
                Contains(remark(State::good, "line 1: go_ssid is set again in line 2")));
}

TEST_F(Configuration, a_misspelt_key_is_told_with_the_one_that_was_meant) {
    const Point point = check(std::string(good_) + "iterface_name=wlan0\n", 'w');
    EXPECT_THAT(point.remarks, Contains(remark(State::bad, "is interface_name meant?")));
}

TEST_F(Configuration, an_intent_is_judged_as_it_is_sent) {
    const std::string peer = "p2p_target_device_mac=02:00:00:00:00:01\np2p_iface_ip=10.0.0.1\n";
    EXPECT_EQ(check(peer + "starting_go_intent=7\n", 'd').state(), State::good);
    EXPECT_THAT(check(peer + "starting_go_intent=150\n", 'd').remarks,
                Contains(remark(State::good, "only its first two characters")));
    EXPECT_THAT(check(peer + "starting_go_intent=16\n", 'd').remarks,
                Contains(remark(State::bad, "an intent is 0 to 15")));
    EXPECT_THAT(check(peer + "starting_go_intent=x\n", 'd').remarks,
                Contains(remark(State::good, "is read as 0")));
}

TEST_F(Configuration, a_peer_in_capitals_is_never_found) {
    EXPECT_THAT(check("p2p_target_device_mac=02:00:00:00:00:AA\n", 'c').remarks,
                Contains(remark(State::bad, "compared as text")));
}

TEST_F(Configuration, a_pass_phrase_has_8_to_63_characters) {
    for (const std::size_t length : {8U, 63U}) {
        EXPECT_EQ(check("go_ssid=a\ngo_passphrase=" + std::string(length, 'x') + "\n", 'w').state(),
                  State::good);
    }
    for (const std::size_t length : {7U, 64U}) {
        EXPECT_EQ(check("go_ssid=a\ngo_passphrase=" + std::string(length, 'x') + "\n", 'w').state(),
                  State::bad);
    }
}

TEST_F(Configuration, what_another_mode_reads_is_not_judged) {
    EXPECT_EQ(check("go_passphrase=x\np2p_target_device_mac=\n", 'S').state(), State::good);
}

TEST_F(Configuration, a_file_of_another_kind_is_no_report_without_end) {
    std::string text;
    for (int line = 0; line < 500; ++line) {
        text += "key" + std::to_string(line) + "=x\n";
    }
    const Point point = check(text + good_, 'w');
    EXPECT_LT(point.remarks.size(), 15U);
    EXPECT_THAT(point.remarks, Contains(remark(State::bad, "and 490 more unknown keys")));
}

TEST_F(Configuration, a_file_too_long_to_judge_is_never_green) {
    std::string text = good_;
    for (int line = 0; line < 10'000; ++line) {
        text += "# comment\n";
    }
    EXPECT_EQ(check(text, 'w').state(), State::not_known);
}

} // namespace
} // namespace wivex::doctor

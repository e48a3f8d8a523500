// SPDX-License-Identifier: Apache-2.0
#include "common/process_state.hpp"
#include "console_capture.hpp"
#include "run/command_line.hpp"
#include "scratch.hpp"
#include "usage_text.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdio_ext.h>
#include <unistd.h>

#include <cstdio>
#include <initializer_list>
#include <limits>
#include <ostream>
#include <string>
#include <vector>

namespace wivex {
namespace {

using namespace test_support;
using namespace testing;
using test_texts::usage_text;

constexpr const char* version_text =
    "\n\n[WIFI]Wivex Version 2.0\n[WIFI]This build is compiled on May 13 2016, 02:36:07.\n";

constexpr const char* prompt_text =
    "Enter configuration file to be used\n\n1: BCRM\n2: QCA\n3: SOFTAP \n[DEFAULT: None]\n\n";

constexpr const char* one_iteration_text =
    "[WIFI]'m' parameter passed without value or 0: Taking number of iterations for running test "
    "case as 1\n";

class CommandLine : public ::testing::Test {
protected:
    void SetUp() override {
        test_support::reset_process_state();
    }

    int parse(std::initializer_list<const char*> arguments) {
        words_ = {"wivex"};
        words_.insert(words_.end(), arguments.begin(), arguments.end());
        argv_.clear();
        for (auto& word : words_) {
            argv_.push_back(word.data());
        }
        argv_.push_back(nullptr);
        optind = 0; // a fresh scan
        return parse_command_line(static_cast<int>(words_.size()), argv_.data());
    }

    int parse_with_input(const std::string& input, std::initializer_list<const char*> arguments) {
        int ends[2]{};
        ::__fpurge(stdin); // what an earlier answer left
        std::clearerr(stdin);
        EXPECT_EQ(::pipe(ends), 0);
        EXPECT_EQ(::write(ends[1], input.data(), input.size()), static_cast<ssize_t>(input.size()));
        ::close(ends[1]);
        const int saved = ::dup(STDIN_FILENO);
        ::dup2(ends[0], STDIN_FILENO);
        ::close(ends[0]);
        const int result = parse(arguments);
        ::dup2(saved, STDIN_FILENO);
        ::close(saved);
        return result;
    }

    void expect_usage(std::initializer_list<const char*> arguments) {
        EXPECT_EQ(parse(arguments), 0);
        EXPECT_EQ(console_.out(), usage_text);
    }

    const std::string& word(std::size_t index) const {
        return words_.at(index);
    }

    ConsoleCapture console_;

private:
    std::vector<std::string> words_;
    std::vector<char*> argv_;
};

TEST_F(CommandLine, print_usage_prints_the_usage_text_to_standard_output) {
    print_usage();
    EXPECT_EQ(console_.out(), usage_text);
    EXPECT_EQ(console_.err(), "");
}

TEST_F(CommandLine, help_prints_the_usage_text_and_stops) {
    expect_usage({"-h"});
    EXPECT_EQ(console_.err(), "");
}

TEST_F(CommandLine, help_stops_even_when_a_mode_was_chosen) {
    expect_usage({"-w", "-h"});
}

TEST_F(CommandLine, version_prints_version_and_build_and_stops) {
    EXPECT_EQ(parse({"-v"}), 0);
    EXPECT_EQ(console_.out(), version_text);
    EXPECT_EQ(console_.err(), "");
}

TEST_F(CommandLine, version_stops_even_when_a_mode_was_chosen) {
    EXPECT_EQ(parse({"-w", "-v"}), 0);
    EXPECT_EQ(console_.out(), version_text);
}

TEST_F(CommandLine, the_first_of_help_and_version_decides) {
    EXPECT_EQ(parse({"-v", "-h"}), 0);
    EXPECT_EQ(console_.out(), version_text);
    EXPECT_EQ(parse({"-hv"}), 0);
    EXPECT_EQ(console_.out(), usage_text);
}

TEST_F(CommandLine, without_any_option_shows_the_usage) {
    expect_usage({});
}

TEST_F(CommandLine, without_a_mode_shows_the_usage) {
    expect_usage({"-m", "5"});
    EXPECT_EQ(console_.err(), "");
}

TEST_F(CommandLine, options_that_choose_no_mode_show_the_usage) {
    expect_usage({"-u", "-i", "3", "-R/tmp/res", "-D/tmp/ap", "-F/tmp/cfg", "-o", "iw"});
}

TEST_F(CommandLine, a_question_mark_is_a_silent_way_to_the_usage) {
    expect_usage({"-w", "-?"});
    EXPECT_EQ(console_.err(), "");
}

TEST_F(CommandLine, the_declared_option_C_has_no_handler_and_shows_the_usage) {
    expect_usage({"-w", "-C", "x"});
    EXPECT_EQ(console_.err(), "");
}

TEST_F(CommandLine, the_declared_option_s_has_no_handler_and_shows_the_usage) {
    expect_usage({"-w", "-s", "x"});
    EXPECT_EQ(console_.err(), "");
}

TEST_F(CommandLine, an_unknown_letter_shows_the_usage) {
    expect_usage({"-w", "-x"});
    EXPECT_THAT(console_.err(), HasSubstr("invalid option -- 'x'"));
}

TEST_F(CommandLine, a_long_option_is_unknown) {
    expect_usage({"--help"});
}

TEST_F(CommandLine, options_whose_argument_is_missing_show_the_usage) {
    for (const char* option : {"-m", "-i", "-o", "-C", "-s"}) {
        SCOPED_TRACE(option);
        EXPECT_EQ(parse({"-w", option}), 0);
        EXPECT_EQ(console_.out(), usage_text);
        EXPECT_THAT(console_.err(), HasSubstr("option requires an argument"));
    }
}

struct ModeOption {
    const char* option;
    std::int32_t RunOptions::*flag;
};

void PrintTo(const ModeOption& mode, std::ostream* out) {
    *out << mode.option;
}

class ModeOfCommandLine : public CommandLine, public ::testing::WithParamInterface<ModeOption> {};

TEST_P(ModeOfCommandLine, is_set_by_its_letter_alone) {
    ASSERT_EQ(parse({GetParam().option, "-m", "2"}), 1);
    for (const auto flag :
         {&RunOptions::loopback_mode, &RunOptions::mac_mode, &RunOptions::scan_mode,
          &RunOptions::p2p_device_mode, &RunOptions::go_mode, &RunOptions::wlan_legacy_mode,
          &RunOptions::p2p_client_mode, &RunOptions::softap_mode}) {
        EXPECT_EQ(run_options.*flag, flag == GetParam().flag ? 1 : 0);
    }
    EXPECT_EQ(console_.out(), "");
    EXPECT_EQ(console_.err(), "");
}

INSTANTIATE_TEST_SUITE_P(Letters, ModeOfCommandLine,
                         ::testing::Values(ModeOption{"-A", &RunOptions::softap_mode},
                                           ModeOption{"-g", &RunOptions::go_mode},
                                           ModeOption{"-l", &RunOptions::loopback_mode},
                                           ModeOption{"-M", &RunOptions::mac_mode},
                                           ModeOption{"-d", &RunOptions::p2p_device_mode},
                                           ModeOption{"-w", &RunOptions::wlan_legacy_mode},
                                           ModeOption{"-c", &RunOptions::p2p_client_mode},
                                           ModeOption{"-S", &RunOptions::scan_mode}),
                         [](const auto& letter) { return std::string(letter.param.option + 1); });

TEST_F(CommandLine, several_modes_can_be_chosen_together_in_one_word) {
    ASSERT_EQ(parse({"-lMdwcgASnet", "-m3"}), 1);
    EXPECT_EQ(run_options.loopback_mode, 1);
    EXPECT_EQ(run_options.mac_mode, 1);
    EXPECT_EQ(run_options.p2p_device_mode, 1);
    EXPECT_EQ(run_options.wlan_legacy_mode, 1);
    EXPECT_EQ(run_options.p2p_client_mode, 1);
    EXPECT_EQ(run_options.go_mode, 1);
    EXPECT_EQ(run_options.softap_mode, 1);
    EXPECT_EQ(run_options.scan_mode, 1);
    EXPECT_STREQ(run_options.scan_ssid, "net");
    EXPECT_EQ(run_options.iteration_count, 3);
}

TEST_F(CommandLine, modes_and_count_of_an_earlier_call_are_cleared) {
    ASSERT_EQ(parse({"-w", "-l", "-m", "7"}), 1);
    ASSERT_EQ(parse({"-d"}), 1);
    EXPECT_EQ(run_options.wlan_legacy_mode, 0);
    EXPECT_EQ(run_options.loopback_mode, 0);
    EXPECT_EQ(run_options.p2p_device_mode, 1);
    EXPECT_EQ(run_options.iteration_count, 1);
}

TEST_F(CommandLine, a_mode_of_an_earlier_call_does_not_count_as_chosen) {
    ASSERT_EQ(parse({"-w", "-m", "7"}), 1);
    expect_usage({"-m", "5"});
    EXPECT_EQ(run_options.wlan_legacy_mode, 0);
}

TEST_F(CommandLine, the_count_of_an_earlier_call_is_unset_even_when_no_mode_is_chosen) {
    ASSERT_EQ(parse({"-w", "-m", "7"}), 1);
    expect_usage({});
    EXPECT_EQ(run_options.iteration_count, -1);
}

TEST_F(CommandLine, the_count_is_taken_with_and_without_a_blank) {
    ASSERT_EQ(parse({"-w", "-m", "5"}), 1);
    EXPECT_EQ(run_options.iteration_count, 5);
    ASSERT_EQ(parse({"-w", "-m12"}), 1);
    EXPECT_EQ(run_options.iteration_count, 12);
    EXPECT_EQ(console_.out(), "");
}

TEST_F(CommandLine, a_count_that_is_missing_zero_negative_or_no_number_means_one_iteration) {
    for (const auto& arguments : std::initializer_list<std::initializer_list<const char*>>{
             {"-w"}, {"-w", "-m", "0"}, {"-w", "-m", "-3"}, {"-w", "-m", "many"}}) {
        EXPECT_EQ(parse(arguments), 1);
        EXPECT_EQ(run_options.iteration_count, 1);
        EXPECT_EQ(console_.out(), one_iteration_text);
        EXPECT_EQ(console_.err(), "");
    }
}

TEST_F(CommandLine, the_last_count_wins) {
    ASSERT_EQ(parse({"-w", "-m", "5", "-m", "2"}), 1);
    EXPECT_EQ(run_options.iteration_count, 2);
}

TEST_F(CommandLine, a_count_followed_by_other_text_is_read_up_to_there) {
    ASSERT_EQ(parse({"-w", "-m", "4x"}), 1);
    EXPECT_EQ(run_options.iteration_count, 4);
}

TEST_F(CommandLine, the_interval_is_zero_unless_given) {
    ASSERT_EQ(parse({"-w", "-m", "1"}), 1);
    EXPECT_EQ(run_options.iteration_interval, 0);
    ASSERT_EQ(parse({"-w", "-m", "1", "-i", "9"}), 1);
    EXPECT_EQ(run_options.iteration_interval, 9);
    ASSERT_EQ(parse({"-w", "-m", "1", "-i", "soon"}), 1);
    EXPECT_EQ(run_options.iteration_interval, 0);
    ASSERT_EQ(parse({"-w", "-m", "1", "-i-4"}), 1);
    EXPECT_EQ(run_options.iteration_interval, -4);
}

TEST_F(CommandLine, debug_is_off_unless_asked_for) {
    ASSERT_EQ(parse({"-w", "-m", "1"}), 1);
    EXPECT_EQ(run_options.debug, 0);
    ASSERT_EQ(parse({"-wu", "-m", "1"}), 1);
    EXPECT_EQ(run_options.debug, 1);
}

TEST_F(CommandLine, only_the_exact_word_iw_compares_with_the_previous_run) {
    EXPECT_EQ(compare_previous, 1);
    ASSERT_EQ(parse({"-S", "-m", "1", "-o", "dbus"}), 1);
    EXPECT_EQ(compare_previous, 0);
    ASSERT_EQ(parse({"-S", "-m", "1", "-o", "iw"}), 1);
    EXPECT_EQ(compare_previous, 1);
    ASSERT_EQ(parse({"-S", "-m", "1", "-o", "IW"}), 1);
    EXPECT_EQ(compare_previous, 0);
    ASSERT_EQ(parse({"-S", "-m", "1", "-oiw"}), 1);
    EXPECT_EQ(compare_previous, 1);
    ASSERT_EQ(parse({"-S", "-m", "1", "-o", "iwx"}), 1);
    EXPECT_EQ(compare_previous, 0);
}

TEST_F(CommandLine, the_scan_ssid_is_the_attached_argument_itself) {
    ASSERT_EQ(parse({"-m", "1", "-SMyAP"}), 1);
    ASSERT_STREQ(run_options.scan_ssid, "MyAP");
    EXPECT_EQ(run_options.scan_ssid, word(3).c_str() + 2);
}

TEST_F(CommandLine, a_scan_ssid_in_a_word_of_its_own_is_not_taken) {
    ASSERT_EQ(parse({"-S", "MyAP", "-m", "1"}), 1);
    EXPECT_EQ(run_options.scan_mode, 1);
    EXPECT_EQ(run_options.scan_ssid, nullptr);
}

TEST_F(CommandLine, an_attached_path_makes_the_user_file_the_configuration) {
    ASSERT_EQ(parse({"-w", "-m", "1", "-F/path/to.cfg"}), 1);
    EXPECT_EQ(run_options.config_choice, -1);
    EXPECT_EQ(run_options.user_config_file, "/path/to.cfg");
    EXPECT_EQ(console_.out(), "");
}

TEST_F(CommandLine, F_alone_asks_for_the_configuration_on_standard_input) {
    ASSERT_EQ(parse_with_input("2\n", {"-w", "-m", "1", "-F"}), 1);
    EXPECT_EQ(run_options.config_choice, 2);
    EXPECT_EQ(run_options.user_config_file, "");
    EXPECT_EQ(console_.out(), prompt_text);
    EXPECT_EQ(console_.err(), "");
}

TEST_F(CommandLine, a_path_in_a_word_of_its_own_is_not_taken_and_the_question_is_asked) {
    ASSERT_EQ(parse_with_input("3\n", {"-F", "/x", "-w", "-m", "1"}), 1);
    EXPECT_EQ(run_options.config_choice, 3);
    EXPECT_EQ(run_options.user_config_file, "");
    EXPECT_EQ(console_.out(), prompt_text);
}

TEST_F(CommandLine, any_number_is_accepted_as_an_answer) {
    ASSERT_EQ(parse_with_input("7\n", {"-w", "-m", "1", "-F"}), 1);
    EXPECT_EQ(run_options.config_choice, 7);
    ASSERT_EQ(parse_with_input("12\n", {"-w", "-m", "1", "-F"}), 1);
    EXPECT_EQ(run_options.config_choice, 12);
    ASSERT_EQ(parse_with_input("  -1", {"-w", "-m", "1", "-F"}), 1);
    EXPECT_EQ(run_options.config_choice, -1);
}

TEST_F(CommandLine, an_answer_is_read_as_far_as_it_is_a_number) {
    ASSERT_EQ(parse_with_input("2-3\n", {"-w", "-m", "1", "-F"}), 1);
    EXPECT_EQ(run_options.config_choice, 2);
    ASSERT_EQ(parse_with_input("\n\t 3abc\n", {"-w", "-m", "1", "-F"}), 1);
    EXPECT_EQ(run_options.config_choice, 3);
    ASSERT_EQ(parse_with_input("+1\n", {"-w", "-m", "1", "-F"}), 1);
    EXPECT_EQ(run_options.config_choice, 1);
    ASSERT_EQ(parse_with_input("--1\n", {"-w", "-m", "1", "-F"}), 1);
    EXPECT_EQ(run_options.config_choice, 0);
}

TEST_F(CommandLine, what_stands_behind_a_number_is_left_to_the_next_question) {
    ASSERT_EQ(parse_with_input("1-2\n", {"-w", "-m", "1", "-F", "-F"}), 1);
    EXPECT_EQ(run_options.config_choice, -2);
    ASSERT_EQ(parse_with_input("1x2\n", {"-w", "-m", "1", "-F", "-F"}), 1);
    EXPECT_EQ(run_options.config_choice, 0);
}

TEST_F(CommandLine, an_answer_of_any_size_chooses_no_file_and_does_no_harm) {
    ASSERT_EQ(parse_with_input("99999999999999999999\n", {"-w", "-m", "1", "-F"}), 1);
    EXPECT_EQ(run_options.config_choice, std::numeric_limits<std::int32_t>::max());
    ASSERT_EQ(parse_with_input("-99999999999999999999\n", {"-w", "-m", "1", "-F"}), 1);
    EXPECT_EQ(run_options.config_choice, std::numeric_limits<std::int32_t>::min());
}

TEST_F(CommandLine, an_answer_that_is_not_a_number_leaves_the_default_file) {
    ASSERT_EQ(parse_with_input("QCA\n", {"-w", "-m", "1", "-F"}), 1);
    EXPECT_EQ(run_options.config_choice, 0);
    EXPECT_EQ(console_.out(), prompt_text);
}

TEST_F(CommandLine, no_answer_at_all_leaves_the_default_file) {
    ASSERT_EQ(parse_with_input("", {"-w", "-m", "1", "-F"}), 1);
    EXPECT_EQ(run_options.config_choice, 0);
}

TEST_F(CommandLine, paths_of_result_and_status_file_are_taken_when_attached) {
    ASSERT_EQ(parse({"-w", "-m", "1", "-R/tmp/res", "-D/tmp/seen.txt"}), 1);
    EXPECT_EQ(run_options.result_file, "/tmp/res");
    EXPECT_EQ(run_options.ap_status_file, "/tmp/seen.txt");
}

TEST_F(CommandLine, paths_of_result_and_status_file_keep_their_defaults_when_not_attached) {
    ASSERT_EQ(parse({"-w", "-m", "1", "-R", "/tmp/res", "-D", "/tmp/seen.txt"}), 1);
    EXPECT_EQ(run_options.result_file, "");
    EXPECT_EQ(run_options.ap_status_file, "/tmp/ap_status.txt");
}

TEST_F(CommandLine, options_behind_other_words_are_found) {
    ASSERT_EQ(parse({"please", "-w", "now", "-m", "2"}), 1);
    EXPECT_EQ(run_options.wlan_legacy_mode, 1);
    EXPECT_EQ(run_options.iteration_count, 2);
}

TEST_F(CommandLine, two_dashes_end_the_options) {
    expect_usage({"-m", "2", "--", "-w"});
}

} // namespace
} // namespace wivex

// SPDX-License-Identifier: Apache-2.0
#include "common/process_state.hpp"
#include "request.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace wivex::doctor {
namespace {

Request request_of(std::vector<std::string> words) {
    run_options = RunOptions();
    words.insert(words.begin(), "wivex-doctor");
    std::vector<char*> argv;
    argv.reserve(words.size() + 1);
    for (std::string& word : words) {
        argv.push_back(word.data());
    }
    argv.push_back(nullptr);
    return parse_request(static_cast<int>(words.size()), argv.data());
}

TEST(Request, takes_the_options_of_the_run) {
    const Request request = request_of({"-w", "-F/tmp/my.cfg", "-m", "3"});
    EXPECT_EQ(request.wish, Request::Wish::check);
    EXPECT_EQ(request.plan.mode, 'w');
    EXPECT_EQ(request.run_options, "-w -F/tmp/my.cfg -m 3");
    EXPECT_EQ(run_options.user_config_file, "/tmp/my.cfg");
}

TEST(Request, takes_its_own_options_wherever_they_stand) {
    const Request request = request_of({"--json", "-d", "--quiet", "--scan"});
    EXPECT_TRUE(request.json && request.quiet && request.scan);
    EXPECT_EQ(request.run_options, "-d");
}

TEST(Request, chooses_the_mode_that_the_run_chooses) {
    EXPECT_EQ(request_of({"-c", "-w"}).plan.mode, 'w');
    EXPECT_EQ(request_of({"-w", "-SAP"}).plan.mode, 'S');
    EXPECT_EQ(request_of({"-g", "-d"}).plan.mode, 'd');
    const Request both = request_of({"-lMw"});
    EXPECT_TRUE(both.plan.loopback && both.plan.mac && both.plan.mode == 'w');
}

TEST(Request, ends_a_softap_run_before_its_mode) {
    const Request request = request_of({"-A", "-w"});
    EXPECT_TRUE(request.plan.softap);
    EXPECT_EQ(request.plan.mode, 0);
}

TEST(Request, answers_for_help_and_version_itself) {
    EXPECT_EQ(request_of({"--help"}).wish, Request::Wish::help);
    EXPECT_EQ(request_of({"-h"}).wish, Request::Wish::help);
    EXPECT_EQ(request_of({"-w", "-v"}).wish, Request::Wish::version);
}

TEST(Request, refuses_what_the_run_would_not_understand) {
    const std::vector<std::vector<std::string>> refused{
        {}, {"-x"}, {"-m", "3"}, {"-w", "-C", "x"}, {"-w", "-m"}, {"-w", "--jsn"}, {"w"}};
    for (const std::vector<std::string>& words : refused) {
        EXPECT_EQ(request_of(words).wish, Request::Wish::refuse);
    }
}

TEST(Request, leaves_words_behind_two_dashes_to_the_run) {
    EXPECT_FALSE(request_of({"-w", "--", "--json"}).json);
}

} // namespace
} // namespace wivex::doctor

// SPDX-License-Identifier: Apache-2.0
#include "common/process_state.hpp"
#include "process_fixture.hpp"
#include "run/start.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>

namespace wivex {
namespace {

using namespace test_support;
using namespace testing;

class ChosenConfig : public ProcessFixture {
protected:
    static const char* path_of(std::int32_t choice) {
        run_options.config_choice = choice;
        return chosen_config_path();
    }
};

TEST_F(ChosenConfig, is_the_file_that_answers_the_question) {
    EXPECT_STREQ(path_of(0), "/lib/modules/wifi/wivex.cfg");
    EXPECT_STREQ(path_of(1), "/lib/modules/wifi/wivex.cfg");
    EXPECT_STREQ(path_of(2), "/lib/modules/wifi/wivex_qca.cfg");
    EXPECT_STREQ(path_of(3), "/lib/modules/wifi/wivex_softap.cfg");
}

TEST_F(ChosenConfig, is_none_behind_any_other_answer) {
    for (const std::int32_t choice : {-2, 4, 7, 1000}) {
        EXPECT_EQ(path_of(choice), nullptr) << choice;
    }
}

TEST_F(ChosenConfig, is_the_file_of_the_user) {
    run_options.user_config_file = "/tmp/my.cfg";
    EXPECT_STREQ(path_of(-1), "/tmp/my.cfg");
}

TEST_F(ChosenConfig, of_a_softap_is_its_own_whatever_the_answer) {
    run_options.softap_mode = 1;
    run_options.user_config_file = "/tmp/my.cfg";
    for (const std::int32_t choice : {-1, 0, 2, 7}) {
        EXPECT_STREQ(path_of(choice), "/lib/modules/wifi/wivex_softap.cfg");
    }
}

} // namespace
} // namespace wivex

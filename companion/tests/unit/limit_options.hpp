// SPDX-License-Identifier: Apache-2.0
// The options of a reader that holds a console against limits.
#pragma once

#include "model/limit_text.hpp"
#include "reader/run_reader.hpp"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string_view>

namespace report_test {

inline wivex::report::ReaderOptions with_limits(std::initializer_list<std::string_view> texts) {
    wivex::report::ReaderOptions options;
    for (const std::string_view text : texts) {
        EXPECT_EQ(wivex::report::add_limit(options.limits, text), "");
    }
    return options;
}

} // namespace report_test

// SPDX-License-Identifier: Apache-2.0
// What a terminal shows while a run goes on, and at its end.

#include "consoles.hpp"
#include "writers/live_view.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

using namespace report_test;
using namespace wivex::report;
using namespace testing;

std::vector<std::string> lines_of(const std::string& text) {
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t newline = std::min(text.find('\n', at), text.size());
        lines.push_back(text.substr(at, newline - at));
        at = newline + 1;
    }
    return lines;
}

TEST(LiveView, fits_a_terminal_of_80_columns) {
    RunReader reader({Mode::unknown, true});
    LiveView view({500, true, 80});
    reader.feed(banner + legacy_pass, 0);
    reader.feed(refused, 20);
    reader.feed(checks_pass + scan_and_associate + take_address, 40);
    reader.feed("[  3]  0.0- 1.0 sec  11.0 MBytes  92.3 Mbits/sec\n", 41);
    const std::string text = view.update(reader.progress(), 44);
    EXPECT_THAT(text, HasSubstr("legacy WLAN"));
    EXPECT_THAT(text, HasSubstr("iteration 2 (3 of 500)"));
    EXPECT_THAT(text, HasSubstr("passed 1   failed 1"));
    EXPECT_THAT(text, HasSubstr("now: traffic for 4 s   throughput 92.3 Mbit/s"));
    EXPECT_THAT(text, HasSubstr("left: about 2 h 45 min"));
    EXPECT_THAT(text, HasSubstr("last failure: iteration 1, scan: SCAN refused"));
    for (const std::string& line : lines_of(text)) {
        EXPECT_LT(line.size(), 80U) << line;
    }
}

TEST(LiveView, redraws_over_what_it_drew) {
    RunReader reader;
    LiveView view({0, true, 80});
    reader.feed(banner + checks_pass);
    const std::size_t drawn = lines_of(view.update(reader.progress(), 0)).size();
    EXPECT_THAT(view.update(reader.progress(), 1),
                StartsWith("\r\x1b[" + std::to_string(drawn) + "A\x1b[J"));
}

TEST(LiveView, prints_plain_lines_where_there_is_no_terminal) {
    RunReader reader({Mode::unknown, true});
    LiveView view({3, false, 80});
    reader.feed(banner + legacy_pass, 0);
    reader.feed(refused, 20);
    std::string text = view.update(reader.progress(), 20);
    EXPECT_EQ(text, "iteration 0 (1 of 3) passed, 0 s, 94.0 Mbit/s\n");
    reader.feed(end, 40);
    text = view.update(reader.progress(), 40);
    EXPECT_EQ(text, "iteration 1 (2 of 3) failed, 0 s, scan: SCAN refused\n");
    EXPECT_THAT(text, Not(HasSubstr("\x1b")));
}

TEST(LiveView, ends_with_a_summary) {
    RunReader reader;
    LiveView view({0, false, 80});
    reader.feed(mixed);
    reader.finish();
    EXPECT_THAT(view.finish(reader.progress()),
                HasSubstr("legacy WLAN: 1 of 3 iterations failed (finished)\n"
                          "  test case 8 (legacy WLAN): 1 failure recorded\n"
                          "  1 x scan: SCAN refused\n"));
}

TEST(LiveView, tells_failures_behind_the_iterations_kept_in_detail) {
    RunReader reader;
    LiveView view({0, false, 80});
    reader.feed(banner);
    for (std::size_t i = 0; i < most_detailed_iterations + 3; ++i) {
        reader.feed(legacy_pass);
    }
    view.update(reader.progress(), 0);
    reader.feed(refused + refused + checks_pass);
    EXPECT_EQ(view.update(reader.progress(), 1),
              "2 more iterations failed, up to iteration 5004\n");
    EXPECT_EQ(view.update(reader.progress(), 2), "");
}

TEST(LiveView, remembers_that_an_earlier_run_did_not_pass) {
    RunReader reader;
    LiveView view({0, true, 80});
    reader.feed(banner + refused + end + banner + legacy_pass + end);
    EXPECT_THAT(view.update(reader.progress(), 0),
                HasSubstr("1 earlier run of this console did not pass"));
    reader.finish();
    EXPECT_THAT(view.finish(reader.progress()), testing::EndsWith("2 runs: 1 failed, 1 passed\n"));
}

} // namespace

// SPDX-License-Identifier: Apache-2.0
#include "console/figures.hpp"
#include "console/time_stamps.hpp"

#include <gtest/gtest.h>

namespace {

using namespace wivex::report;

double megabits(std::string_view line) {
    const auto figure = read_traffic(line);
    return figure ? figure->megabits_per_second : -1;
}

TEST(Traffic, reads_the_lines_of_both_iperf_versions) {
    EXPECT_DOUBLE_EQ(megabits("[  3]  0.0- 1.0 sec  11.2 MBytes  94.4 Mbits/sec"), 94.4);
    EXPECT_DOUBLE_EQ(megabits("[  1] 9.0000-10.0000 sec   236 MBytes  1.98 Gbits/sec"), 1980);
    EXPECT_DOUBLE_EQ(
        megabits("[  5]   0.00-1.00   sec  11.3 MBytes  94.9 Mbits/sec    0    187 KBytes"), 94.9);
    EXPECT_DOUBLE_EQ(megabits("[SUM]  0.0-10.0 sec   112 MBytes  500 Kbits/sec"), 0.5);
    EXPECT_DOUBLE_EQ(megabits("[  3]  0.0- 1.0 sec  128 KBytes  1.00 MBytes/sec"), 8.388608);
}

TEST(Traffic, tells_the_total_from_an_interval) {
    EXPECT_FALSE(read_traffic("[  3]  0.0- 1.0 sec  11.2 MBytes  94.4 Mbits/sec")->is_total());
    EXPECT_FALSE(read_traffic("[  3]  8.0-10.0 sec  11.2 MBytes  94.4 Mbits/sec")->is_total());
    EXPECT_TRUE(read_traffic("[  3]  0.0-10.1 sec  112 MBytes  93.0 Mbits/sec")->is_total());
    EXPECT_TRUE(read_traffic("[SUM]  0.0-10.1 sec  112 MBytes  93.0 Mbits/sec")->is_sum);
}

TEST(Traffic, refuses_everything_else) {
    for (const char* line :
         {"", "[", "[  3] local 192.168.49.40 port 39246 connected", "[ ID] Interval Transfer Band",
          "[WIFI]Chip type is = 3 and more of it",
          "[  3]  0.0- 1.0 sec  11.2 MBytes  94.4 Furlongs",
          "[  3]  0.0- 1.0 sec  11.2 MBytes  -4.4 Mbits/sec", "[  3]  1e9999- 1.0 sec 1 M 1 Mbits/",
          "[  3]  0.0- 1.0 sec  11.2 MBytes  nan Mbits/sec", "[  3]  0.0- 1.0 sec  11.2 MByt"}) {
        EXPECT_FALSE(read_traffic(line)) << line;
    }
}

TEST(AccessPoint, reads_a_line_of_the_supplicants_listing) {
    const auto point =
        read_access_point("02:00:00:00:02:00\t2462\t-71\t[WPA2-PSK-CCMP][ESS]\toffice floor 2");
    ASSERT_TRUE(point);
    EXPECT_EQ(point->bssid, "02:00:00:00:02:00");
    EXPECT_EQ(point->frequency, 2462);
    EXPECT_DOUBLE_EQ(point->signal, -71);
    EXPECT_EQ(point->ssid, "office floor 2");
}

TEST(AccessPoint, refuses_other_lines) {
    EXPECT_FALSE(read_access_point("bssid / frequency / signal level / flags / ssid"));
    EXPECT_FALSE(read_access_point("02:00:00:00:02:00 2462 -71 [ESS] office"));
    EXPECT_FALSE(read_access_point("02:00:00:00:02:00\t2462\t-71\t[ESS]"));
}

TEST(Stamp, reads_the_formats_of_common_logging_tools) {
    const auto seconds = [](std::string_view line) {
        const auto stamp = read_stamp(line, StampFormat::none);
        EXPECT_TRUE(stamp) << line;
        EXPECT_EQ(stamp->rest, "text here") << line;
        return stamp->seconds;
    };
    EXPECT_DOUBLE_EQ(seconds("1718186400.25 text here"), 1718186400.25);
    EXPECT_DOUBLE_EQ(seconds("2024-06-12T10:00:00.5Z text here"), 1718186400.5);
    EXPECT_DOUBLE_EQ(seconds("2024-06-12T12:00:00+02:00 text here"), 1718186400);
    EXPECT_DOUBLE_EQ(seconds("[2024-06-12 10:00:00] text here"), 1718186400);
    EXPECT_DOUBLE_EQ(seconds("00:01:02.5 text here"), 62.5);
    EXPECT_DOUBLE_EQ(seconds("Jun 12 10:00:01 text here") - seconds("Jun 12 10:00:00 text here"),
                     1);
    EXPECT_DOUBLE_EQ(seconds("Jun  2 00:00:00 text here") - seconds("Jun  1 00:00:00 text here"),
                     86400);
}

TEST(Stamp, refuses_what_is_none) {
    for (const char* line : {"", "text", "12 text", "10:00 text", "Jux 12 10:00:00 text",
                             "2024-13-12T10:00:00 text", "2024-06-12T10:00:00text", "1718186400x",
                             "an Jun 12 10:00:00 text", "[2024-06-12 10:00:00 text"}) {
        EXPECT_FALSE(read_stamp(line, StampFormat::none)) << line;
    }
}

} // namespace

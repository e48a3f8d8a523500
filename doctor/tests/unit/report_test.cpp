// SPDX-License-Identifier: Apache-2.0
#include "report.hpp"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

namespace wivex::doctor {
namespace {

std::vector<Point> three_points() {
    Point module("module");
    module.found = "0a5c:bd27";
    module.note("worth knowing");
    Point supplicant("supplicant");
    supplicant.bad("nobody \"listens\"", "[WIFI]Unable to open sockets!!", "start it");
    Point air("air");
    air.skip("not asked");
    return {module, supplicant, air};
}

TEST(Text, tells_what_is_bad_what_the_run_prints_and_what_mends_it) {
    EXPECT_EQ(as_text({}, three_points(), false),
              "good         module         0a5c:bd27\n"
              "    note: worth knowing\n"
              "bad          supplicant\n"
              "    nobody \"listens\"\n"
              "        the run prints: [WIFI]Unable to open sockets!!\n"
              "        mend it: start it\n"
              "not checked  air            not asked\n"
              "not ready: bad: supplicant\n");
}

TEST(Text, tells_only_what_is_not_good_when_quiet) {
    Request request;
    request.quiet = true;
    EXPECT_EQ(as_text(request, three_points(), false),
              "bad          supplicant\n"
              "    nobody \"listens\"\n"
              "        the run prints: [WIFI]Unable to open sockets!!\n"
              "        mend it: start it\n");
    EXPECT_EQ(as_text(request, {Point("root")}, false), "");
}

TEST(Text, has_colours_only_where_they_are_wanted) {
    EXPECT_EQ(as_text({}, {Point("root")}, false).find('\033'), std::string::npos);
    EXPECT_NE(as_text({}, {Point("root")}, true).find("\033[32mgood"), std::string::npos);
}

TEST(Text, never_calls_ready_what_is_not_known) {
    Point driver("driver");
    driver.unknown("down", "[WIFI]ERROR:WiFi network interface not up", "ifconfig wlan0 up");
    EXPECT_EQ(as_text({}, {driver}, false),
              "not known    driver\n"
              "    not known: down\n"
              "        it then prints: [WIFI]ERROR:WiFi network interface not up\n"
              "        mend it: ifconfig wlan0 up\n"
              "not ready: not known: driver\n");
    EXPECT_FALSE(is_ready({driver}));
}

TEST(Ready, is_a_device_without_bad_points) {
    EXPECT_FALSE(is_ready(three_points()));
    EXPECT_TRUE(is_ready({three_points().front(), three_points().back()}));
}

TEST(Json, holds_the_same) {
    const auto report = nlohmann::json::parse(as_json({}, three_points()));
    EXPECT_EQ(report["ready"], false);
    EXPECT_EQ(report["points"][1]["state"], "bad");
    EXPECT_EQ(report["points"][1]["remarks"][0]["found"], "nobody \"listens\"");
    EXPECT_EQ(report["points"][2]["state"], "not checked");
    EXPECT_EQ(report["points"][2]["found"], "not asked");
}

TEST(Json, is_whole_whatever_stands_in_the_texts) {
    Point point("configuration");
    std::string every_byte;
    for (int byte = 0; byte < 256; ++byte) {
        every_byte += static_cast<char>(byte);
    }
    point.bad(every_byte, every_byte, every_byte);
    EXPECT_TRUE(nlohmann::json::accept(as_json({}, {point})));
}

} // namespace
} // namespace wivex::doctor

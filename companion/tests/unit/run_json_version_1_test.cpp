// SPDX-License-Identifier: Apache-2.0
// Who reads run.json as it was in version 1 finds every member of it, and of the same type.

#include "consoles.hpp"
#include "writers/json_writer.hpp"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>
#include <string>

namespace {

using namespace report_test;
using namespace wivex::report;
using Json = nlohmann::json;

// One with a failure and an access point, a stamp before every line.
Json stamped_document() {
    std::istringstream lines(banner + legacy_pass + refused + checks_pass +
                             "02:00:00:00:01:00\t2412\t-40\t[WPA2-PSK-CCMP][ESS]\tline-ap\n" +
                             scan_and_associate + take_address + traffic + disconnect +
                             session_closes + end);
    std::string console;
    int now = 1700000000;
    for (std::string line; std::getline(lines, line); now += 2) {
        console += std::to_string(now) + ".000 " + line + "\n";
    }
    return Json::parse(write_json(read(console)));
}

struct Member {
    std::string path;
    std::string type;
};

void expect_members(const Json& place, std::initializer_list<Member> members) {
    for (const Member& member : members) {
        const Json::json_pointer path("/" + member.path);
        ASSERT_TRUE(place.contains(path)) << member.path << " is not in\n" << place.dump(1);
        EXPECT_EQ(place.at(path).type_name(), member.type) << member.path;
    }
}

TEST(Version1OfRunJson, is_all_there_in_the_document) {
    expect_members(stamped_document(), {{"format", "string"},
                                        {"version", "number"},
                                        {"console/bytes", "number"},
                                        {"console/lines", "number"},
                                        {"console/unknown_lines", "number"},
                                        {"runs_left_out", "number"},
                                        {"runs", "array"}});
}

TEST(Version1OfRunJson, is_all_there_in_a_run) {
    expect_members(stamped_document().at("runs").at(0), {{"mode", "string"},
                                                         {"end", "string"},
                                                         {"clean", "boolean"},
                                                         {"times", "string"},
                                                         {"began", "string"},
                                                         {"seconds", "number"},
                                                         {"result_file", "string"},
                                                         {"result_file_written", "boolean"},
                                                         {"device/build", "string"},
                                                         {"device/config_file", "string"},
                                                         {"device/chip_type", "number"},
                                                         {"device/vendor_id", "string"},
                                                         {"device/product_id", "string"},
                                                         {"device/mac_kernel", "null"},
                                                         {"device/mac_chip", "null"},
                                                         {"device/address", "string"},
                                                         {"unknown_keys", "array"},
                                                         {"iterations_started", "number"},
                                                         {"outcomes/passed", "number"},
                                                         {"outcomes/failed", "number"},
                                                         {"outcomes/failed-uncounted", "number"},
                                                         {"outcomes/unfinished", "number"},
                                                         {"warned", "number"},
                                                         {"clients_served", "number"},
                                                         {"test_cases/0/number", "number"},
                                                         {"test_cases/0/title", "string"},
                                                         {"test_cases/0/failures", "number"},
                                                         {"failures_without_test_case", "number"},
                                                         {"access_points_left_out", "number"}});
}

TEST(Version1OfRunJson, is_all_there_in_spreads_and_phases) {
    const Json run = stamped_document().at("runs").at(0);
    for (const char* const path : {"/iteration_seconds", "/throughput", "/phases/0/seconds",
                                   "/access_points/0/signal", "/timeline/0/throughput"}) {
        SCOPED_TRACE(path);
        expect_members(
            run.at(Json::json_pointer(path)),
            {{"count", "number"}, {"least", "number"}, {"mean", "number"}, {"most", "number"}});
    }
    expect_members(run.at("phases").at(0), {{"phase", "string"},
                                            {"verdicts/passed", "number"},
                                            {"verdicts/warned", "number"},
                                            {"verdicts/unfinished", "number"},
                                            {"verdicts/failed", "number"}});
}

TEST(Version1OfRunJson, is_all_there_in_causes_and_failures) {
    const Json run = stamped_document().at("runs").at(0);
    expect_members(run.at("causes").at(0), {{"cause", "string"},
                                            {"words", "string"},
                                            {"phase", "string"},
                                            {"code", "number"},
                                            {"test_case", "number"},
                                            {"records_each", "number"},
                                            {"failures", "number"},
                                            {"warnings", "number"},
                                            {"interrupted", "number"},
                                            {"first_iteration", "number"},
                                            {"last_iteration", "number"}});
    expect_members(run.at("failures").at(0), {{"iteration", "number"},
                                              {"phase", "string"},
                                              {"cause", "string"},
                                              {"warning", "boolean"},
                                              {"interrupted", "boolean"},
                                              {"concluded", "boolean"},
                                              {"line", "number"},
                                              {"console", "array"},
                                              {"console_at", "number"}});
}

TEST(Version1OfRunJson, is_all_there_in_iterations_timeline_and_access_points) {
    const Json run = stamped_document().at("runs").at(0);
    expect_members(run.at("iterations").at(0), {{"iteration", "number"},
                                                {"outcome", "string"},
                                                {"warned", "boolean"},
                                                {"start", "number"},
                                                {"seconds", "number"},
                                                {"throughput", "number"},
                                                {"phases/scan/verdict", "string"},
                                                {"phases/scan/seconds", "number"}});
    expect_members(run.at("timeline").at(0), {{"first", "number"},
                                              {"iterations", "number"},
                                              {"outcomes/passed", "number"},
                                              {"warned", "number"},
                                              {"seconds/scan/mean", "number"}});
    expect_members(run.at("access_points").at(0), {{"bssid", "string"},
                                                   {"ssid", "string"},
                                                   {"frequency", "number"},
                                                   {"times_seen", "number"}});
}

} // namespace

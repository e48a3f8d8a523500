// SPDX-License-Identifier: Apache-2.0
#include "written_report.hpp"

#include "common/content_id.hpp"

namespace wivex::line {

namespace {

using Json = nlohmann::ordered_json;

Json text_or_null(const std::string& text) {
    return text.empty() ? Json() : Json(text);
}

Json spread(double value) {
    return {{"count", 3}, {"least", value * 0.9}, {"mean", value}, {"most", value * 1.1}};
}

Json phase(const char* name, double seconds) {
    return {{"phase", name}, {"verdicts", {{"passed", 3}}}, {"seconds", spread(seconds)}};
}

Json run_of(const WrittenReport& report) {
    const int failed = report.verdict == "failed" ? 1 : 0;
    const int unfinished = report.verdict == "passed" || failed == 1 ? 0 : 1;
    Json causes = Json::array();
    Json failures = Json::array();
    if (!report.cause.empty()) {
        causes.push_back(
            {{"cause", report.cause}, {"failures", 1}, {"warnings", 0}, {"first_iteration", 2}});
        failures.push_back({{"iteration", 2},
                            {"cause", report.cause},
                            {"warning", false},
                            {"console", {"a line", "another line"}}});
    }
    return {
        {"id", report.id.empty() ? content_id(report.serial + report.began + report.verdict +
                                              report.mode + report.cause)
                                 : report.id},
        {"mode", report.mode},
        {"end", report.end},
        {"clean", report.verdict == "passed"},
        {"verdict", report.verdict},
        {"began_at", text_or_null(report.began)},
        {"seconds", 31.5},
        {"result_file_written", report.end == "finished"},
        {"device", {{"mac_kernel", nullptr}, {"mac_chip", nullptr}}},
        {"iterations_started", 3},
        {"outcomes",
         {{"passed", 3 - failed - unfinished},
          {"failed", failed},
          {"failed-uncounted", 0},
          {"unfinished", unfinished}}},
        {"warned", 0},
        {"throughput", report.throughput > 0 ? spread(report.throughput) : Json()},
        {"phases", Json::array({phase("scan", 1.5), phase("associate", report.associate_seconds),
                                phase("dhcp", 0.4)})},
        {"causes", causes},
        {"failures", failures},
        {"iterations", Json::array({{{"iteration", 0}, {"outcome", "passed"}}})},
        {"timeline", Json::array()}};
}

} // namespace

nlohmann::ordered_json WrittenReport::json() const {
    Json identity{
        {"serial", text_or_null(serial)},   {"part", "WX-1"},
        {"station", text_or_null(station)}, {"attempt", attempt ? Json(*attempt) : Json()},
        {"mac", text_or_null(mac)},         {"firmware", text_or_null(firmware)},
        {"facts", {{"fixture", "7"}}},      {"warnings", Json::array()}};
    return {{"format", "wivex-report"}, {"version", 2},
            {"identity", identity},     {"verdict", verdict},
            {"runs_left_out", 0},       {"runs", Json::array({run_of(*this)})}};
}

} // namespace wivex::line

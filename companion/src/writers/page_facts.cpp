// SPDX-License-Identifier: Apache-2.0
#include "writers/page_facts.hpp"

#include "common/words.hpp"
#include "model/run_id.hpp"
#include "writers/html_text.hpp"
#include "writers/identity_words.hpp"
#include "writers/page.hpp"

#include <cmath>

namespace wivex::report {

namespace {

std::string fact(std::string_view name, const std::string& value) {
    if (value.empty()) {
        return "";
    }
    return element("dt", name) + element("dd", escaped(value)) + "\n";
}

std::string module_words(const Device& device) {
    return device.vendor_id.empty() ? ""
                                    : device.vendor_id + ":" + device.product_id + " (chip type " +
                                          std::to_string(device.chip_type) + ")";
}

std::string keys_words(const Run& run) {
    std::string keys;
    for (const std::string& key : run.unknown_keys) {
        keys += (keys.empty() ? "" : ", ") + key;
    }
    return keys;
}

std::string_view words_of(TimeSource times) {
    switch (times) {
    case TimeSource::arrival:
        return "arrival of the lines";
    case TimeSource::stamps:
        return "time stamps in the console";
    default:
        return "nowhere: unknown";
    }
}

std::string signal_words(const Spread& signal) {
    if (signal.count == 0) {
        return "not told";
    }
    const std::string mean = figure_text(signal.mean());
    return signal.most > signal.least
               ? mean + " (" + figure_text(signal.least) + " to " + figure_text(signal.most) + ")"
               : mean;
}

std::string number_cell(const std::string& markup) {
    return element("td", {{"class", "number"}}, markup);
}

std::string access_point_row(const AccessPoint& point) {
    return element("tr",
                   element("th", {{"scope", "row"}},
                           point.ssid.empty() ? element("i", "hidden") : escaped(point.ssid)) +
                       element("td", escaped(point.bssid)) +
                       number_cell(point.frequency == 0 ? "" : std::to_string(point.frequency)) +
                       number_cell(std::to_string(point.times_seen)) +
                       number_cell(signal_words(point.signal))) +
           "\n";
}

} // namespace

std::string facts_card(const Log& log, const Run& run, const std::string& prefix) {
    const Device& device = run.device;
    std::string text = "\n" + fact("Module", module_words(device));
    text += fact("MAC, kernel", device.mac_kernel);
    text += fact("MAC, chip", device.mac_chip);
    text += fact("Last address", device.address);
    text += fact("Tool", device.build);
    text += fact("Configuration", device.config_file);
    text += fact("Unknown keys in it", keys_words(run));
    text += fact("Result file", run.result_file);
    text += fact("Began", began_words(run));
    text += fact("Ended", run.when.ended ? rfc3339(*run.when.ended) : "");
    text += fact("Took", std::isnan(run.seconds) ? "" : duration_text(run.seconds));
    text += fact("Times from", std::string(words_of(run.times)));
    text += fact("Their zone", zone_words(run));
    text += fact("Run id", run_id(log, run));
    return card(prefix + "device", "Device and run",
                element("dl", {{"class", "facts"}}, text) + "\n");
}

std::string access_points_card(const Run& run, const std::string& prefix) {
    if (run.access_points.empty()) {
        return "";
    }
    std::string rows;
    for (const AccessPoint& point : run.access_points) {
        rows += access_point_row(point);
    }
    std::string text = table({},
                             column_head("SSID") + column_head("BSSID") + number_head("MHz") +
                                 number_head("Seen") + number_head("Signal, dBm"),
                             rows);
    if (run.unlisted_access_points != 0) {
        text += paragraph("soft", "More were seen than fit in this table.");
    }
    return card(prefix + "accesspoints", "Access points", text);
}

} // namespace wivex::report

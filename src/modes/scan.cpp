// SPDX-License-Identifier: Apache-2.0
#include "modes/scan.hpp"

#include "common/console.hpp"
#include "common/files.hpp"
#include "common/process_state.hpp"
#include "common/scan_answer.hpp"
#include "diag/access_points.hpp"
#include "diag/nl80211_scan.hpp"
#include "modes/ap_status_file.hpp"

#include <sys/stat.h>

#include <algorithm>
#include <string_view>

namespace wivex {

namespace {

constexpr std::int32_t seen = 0;

// False when it is there but cannot be read to its end: what it held must not be forgotten.
bool read_previous_status(StatusTable& known) {
    if (run_options.debug != 0) {
        print_out("[WIFI]SCAN STARTED\n\n");
    }
    const StatusFileRead previous =
        read_status_file(run_options.ap_status_file, run_options.ap_status_links, known);
    if (!previous.opened) {
        print_out("[WIFI]First time dump %s\n", run_options.ap_status_file.c_str());
    }
    if (previous.error != 0) {
        print_error("[WIFI]File", previous.error);
    }
    return !previous.opened || previous.error == 0;
}

void print_table() {
    print_out("[WIFI]Number of APs founds are %zu\n", scan_table().size());
    for (const AccessPoint& access_point : scan_table().all()) {
        print_out("[WIFI]%s\n", access_point.ssid.c_str());
    }
}

void find_matches(std::string_view prefix, StatusTable& matches) {
    for (const AccessPoint& access_point : scan_table().all()) {
        if (!access_point.ssid.view().starts_with(prefix)) {
            continue;
        }
        print_out("[WIFI]%s\n", access_point.ssid.c_str());
        AccessPoint match = access_point;
        match.status = seen;
        matches.append(match);
        if (matches.full()) {
            print_out("[WIFI]More than %zu AP coming with matching prefix ssid\n",
                      status_table_capacity);
            return;
        }
    }
}

void update(StatusTable& known, const AccessPoint& match) {
    const auto all = known.all();
    const auto same = std::find_if(all.begin(), all.end(), [&match](const AccessPoint& other) {
        return other.bssid.view() == match.bssid.view();
    });
    if (same == all.end()) {
        known.append(match);
        return;
    }
    same->status = seen;
    same->signal = match.signal;
}

// Without earlier access points every match is taken as it comes, also when one BSSID comes twice.
void merge(StatusTable& known, const StatusTable& matches) {
    const bool first_run = known.empty();
    for (const AccessPoint& match : matches.all()) {
        if (first_run) {
            known.append(match);
        } else {
            update(known, match);
        }
    }
}

int select_by_prefix(const char* prefix, StatusTable& known) {
    print_out("[WIFI]ssid prefix define for check=%s\n", prefix);
    StatusTable matches;
    find_matches(prefix, matches);
    print_out("[WIFI]APs found with matching prefix are %zu\n", matches.size());
    if (matches.empty()) {
        print_out("[WIFI]AP with prefix not found\n");
        return scan_answer::no_match;
    }
    merge(known, matches);
    return scan_answer::succeeded;
}

int scan_and_select(const char* prefix, StatusTable& known) {
    if (execute_scan_nl_command() == scan_answer::scan_failed) {
        return scan_answer::scan_failed;
    }
    if (check_scan_output() == scan_answer::nothing_heard) {
        return scan_answer::nothing_heard;
    }
    print_table();
    if (prefix != nullptr) {
        return select_by_prefix(prefix, known);
    }
    print_out("[WIFI]No ssid defined for check\n");
    if (run_options.debug != 0) {
        print_out("SSIDS CURRENTLY AVAILABLE\n\n");
    }
    return scan_answer::succeeded;
}

} // namespace

int scan_wifi_test(const char* prefix) {
    StatusTable known;
    if (compare_previous == 1 && !read_previous_status(known)) {
        return scan_answer::status_lost;
    }
    const int result = scan_and_select(prefix, known);
    print_out("[WIFI]AP scan result dump to file %s\n", run_options.ap_status_file.c_str());
    const int error =
        write_status_file(run_options.ap_status_file, run_options.ap_status_links, known, result);
    if (error != 0) {
        print_error("[WIFI]not able to open file\n", error);
    }
    return result;
}

int check_scan_output() {
    struct stat listing {};
    if (call_on_file([&listing] { return stat(scan_listing, &listing); }) != 0) {
        return scan_answer::succeeded;
    }
    return listing.st_size == 0 ? scan_answer::nothing_heard : scan_answer::succeeded;
}

} // namespace wivex

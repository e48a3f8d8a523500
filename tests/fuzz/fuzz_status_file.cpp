// SPDX-License-Identifier: Apache-2.0
// The access-point status file of an earlier run. What was read and is written comes back as it
// was, up to the first line that the format itself cannot carry.

#include "memory_file.hpp"
#include "modes/ap_status_file.hpp"
#include "require.hpp"

#include <memory>

namespace {

using fuzz::require;
using wivex::AccessPoint;
using wivex::StatusTable;

void check(const AccessPoint& access_point) {
    require(access_point.status == 1 && access_point.signal.view() == "0");
    require(access_point.bssid.view().empty() || access_point.bssid.view().size() == 17);
    require(access_point.bssid.view().find_first_of("'/") == std::string_view::npos);
    require(access_point.ssid.view().size() <= 128);
    require(access_point.ssid.view().find_first_of("'/\n") == std::string_view::npos);
}

// A line of fewer than six characters ends the file, and a malformed BSSID may hold a newline.
bool is_carried(const AccessPoint& access_point) {
    const std::size_t line = access_point.bssid.view().size() + 5 + access_point.ssid.view().size();
    return line >= 6 && access_point.bssid.view().find('\n') == std::string_view::npos;
}

// A name of 128 characters does not come back: it counts with its newline.
std::string_view carried_ssid(const AccessPoint& access_point) {
    const std::string_view ssid = access_point.ssid.view();
    return ssid.size() == 128 ? std::string_view() : ssid;
}

// A BSSID is taken whole or not at all.
void check_first(std::string_view file, const StatusTable& known) {
    std::string_view line = file.substr(0, file.find_first_of(std::string_view("\n\0", 2)));
    if (file.substr(line.size()).starts_with('\n')) {
        line = file.substr(0, line.size() + 1);
    }
    const std::string_view bssid = line.substr(0, line.find_first_of("'/"));
    if (line.size() < 6 || line.size() >= 499) {
        return;
    }
    require(!known.empty());
    require(known.all()[0].bssid.view() == (bssid.size() == 17 ? bssid : std::string_view()));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::MemoryFile earlier;
    earlier.fill(fuzz::text_of(data, size));
    const auto known = std::make_unique<StatusTable>();
    require(wivex::read_status_file(earlier.path(), wivex::Links::follow, *known).error == 0);
    require(known->size() <= wivex::status_table_capacity);
    check_first(fuzz::text_of(data, size), *known);

    const fuzz::MemoryFile later;
    require(wivex::write_status_file(later.path(), wivex::Links::follow, *known, 0) == 0);
    const auto again = std::make_unique<StatusTable>();
    require(wivex::read_status_file(later.path(), wivex::Links::follow, *again).error == 0);

    std::size_t index = 0;
    for (const AccessPoint& access_point : known->all()) {
        check(access_point);
        if (!is_carried(access_point)) {
            return 0;
        }
        require(index < again->size());
        const AccessPoint& came_back = again->all()[index++];
        check(came_back);
        require(came_back.bssid.view() == access_point.bssid.view());
        require(came_back.ssid.view() == carried_ssid(access_point));
    }
    require(index == again->size());
    return 0;
}

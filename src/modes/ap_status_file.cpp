// SPDX-License-Identifier: Apache-2.0
#include "modes/ap_status_file.hpp"

#include "common/console.hpp"
#include "common/scan_answer.hpp"

#include <fcntl.h>

#include <array>
#include <cerrno>
#include <string_view>

namespace wivex {

namespace {

constexpr std::size_t line_size = 500;
constexpr std::size_t shortest_line = 6;
constexpr std::size_t bssid_length = 17;
constexpr std::size_t longest_ssid_field = 128;

constexpr std::size_t bssid_field = 0;
constexpr std::size_t ssid_field = 3;

// These numbers are part of the messages: kept.
constexpr int bad_bssid_number = 985;
constexpr int bad_ssid_number = 995;

constexpr std::int32_t not_seen = 1;

using Fields = std::array<std::string_view, 4>;

void print_bad_field(int number) {
    print_out("[WIFI]Should not happend %d   %s\n", number, "scan_wifi_test");
}

// A field ends at "/" and also at an apostrophe, behind which nothing more is read. Kept.
Fields split(std::string_view line) {
    Fields fields;
    for (std::string_view& field : fields) {
        field = line.substr(0, line.find_first_of("'/"));
        line.remove_prefix(field.size());
        if (!line.starts_with('/')) {
            break;
        }
        line.remove_prefix(1);
    }
    return fields;
}

std::string_view without_newline(std::string_view text) {
    return text.substr(0, text.find('\n'));
}

AccessPoint read_access_point(std::string_view line) {
    const Fields fields = split(line);
    AccessPoint access_point;
    access_point.status = not_seen;
    access_point.signal = FixedText<8>("0");
    if (fields[bssid_field].size() == bssid_length) {
        access_point.bssid = FixedText<18>(fields[bssid_field]);
    } else {
        print_bad_field(bad_bssid_number);
    }
    // The field counts with its newline: a name of 128 characters does not come back.
    if (fields[ssid_field].size() <= longest_ssid_field) {
        access_point.ssid = SsidText(without_newline(fields[ssid_field]));
    } else {
        print_bad_field(bad_ssid_number);
    }
    return access_point;
}

void write_access_point(FileWriter& file, const AccessPoint& access_point) {
    if (access_point.status == not_seen) {
        file.print("%s//%d/%s\n", access_point.bssid.c_str(), access_point.status,
                   access_point.ssid.c_str());
        return;
    }
    file.print("%s/%s/%d/%s\n", access_point.bssid.c_str(), access_point.signal.c_str(),
               access_point.status, access_point.ssid.c_str());
}

} // namespace

StatusFileRead read_status_file(const std::string& path, Links links, StatusTable& known) {
    FileReader file(open_file(path.c_str(), O_RDONLY, links));
    if (!file) {
        return {false, errno};
    }
    std::array<char, line_size> line{};
    while (file.read_line(line)) {
        const std::string_view text(line.data());
        if (text.size() < shortest_line) {
            break;
        }
        known.append(read_access_point(text));
    }
    // A folder counts as a file without lines.
    return {true, file.error() == EISDIR ? 0 : file.error()};
}

int write_status_file(const std::string& path, Links links, const StatusTable& known, int result) {
    FileWriter file(open_to_write(path.c_str(), links));
    if (!file) {
        return errno;
    }
    if (known.empty() && result <= scan_answer::scan_failed && result >= scan_answer::no_match) {
        file.print("//%d/\n", -result);
    }
    for (const AccessPoint& access_point : known.all()) {
        write_access_point(file, access_point);
    }
    return file.close();
}

} // namespace wivex

#include "tests/ap_status_file.hpp"

#include "common/console.hpp"
#include "common/unique_fd.hpp"

#include <array>
#include <cstdio>
#include <string_view>

namespace wivex {

namespace {

constexpr std::size_t line_size = 500;
constexpr std::size_t shortest_line = 6;
constexpr std::size_t bssid_length = 17;
constexpr std::size_t longest_ssid_field = 128;

constexpr std::size_t bssid_field = 0;
constexpr std::size_t ssid_field = 3;

// These numbers are part of the messages; scripts on the line look for them.
constexpr int bad_bssid_number = 985;
constexpr int bad_ssid_number = 995;

constexpr std::int32_t not_seen = 1;

using Fields = std::array<std::string_view, 4>;

void print_bad_field(int number) {
    print_out("[WIFI]Should not happend %d   %s\n", number, "scan_wifi_test");
}

// A field ends at "/" and also at an apostrophe, behind which nothing more is read: status files of
// the field are written and read by this rule.
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

void write_access_point(std::FILE* file, const AccessPoint& access_point) {
    if (access_point.status == not_seen) {
        std::fprintf(file, "%s//%d/%s\n", access_point.bssid.c_str(), access_point.status,
                     access_point.ssid.c_str());
        return;
    }
    std::fprintf(file, "%s/%s/%d/%s\n", access_point.bssid.c_str(), access_point.signal.c_str(),
                 access_point.status, access_point.ssid.c_str());
}

} // namespace

bool read_status_file(const std::string& path, StatusTable& known) {
    const UniqueFile file(std::fopen(path.c_str(), "re"));
    if (!file) {
        return false;
    }
    std::array<char, line_size> line{};
    while (std::fgets(line.data(), static_cast<int>(line.size()), file.get()) != nullptr) {
        const std::string_view text(line.data());
        if (text.size() < shortest_line) {
            break;
        }
        known.append(read_access_point(text));
    }
    return true;
}

bool write_status_file(const std::string& path, const StatusTable& known, int result) {
    const UniqueFile file(std::fopen(path.c_str(), "we"));
    if (!file) {
        return false;
    }
    if (known.empty() && result <= -2 && result >= -4) {
        std::fprintf(file.get(), "//%d/\n", -result);
    }
    for (const AccessPoint& access_point : known.all()) {
        write_access_point(file.get(), access_point);
    }
    return written_completely(file.get());
}

} // namespace wivex

// SPDX-License-Identifier: Apache-2.0
// The settings of the DHCP server that the owner of a group starts.
#include "checks.hpp"
#include "common/files.hpp"
#include "probe.hpp"
#include "text.hpp"

#include <fcntl.h>

#include <array>

namespace wivex::doctor {

namespace {

// What udhcpd takes without a name in the command line, and without an interface in its settings.
constexpr const char* usual_settings = "/etc/udhcpd.conf";
constexpr const char* usual_interface = "eth0";

std::string interface_in(const std::string& path) {
    FileReader file(open_file(path.c_str(), O_RDONLY));
    std::array<char, 512> buffer{};
    std::string interface = usual_interface;
    while (file && file.read_line(buffer)) {
        std::string_view line(buffer.data());
        line = trimmed(line.substr(0, line.find_first_of("#\n")));
        constexpr std::string_view key = "interface";
        if (line.starts_with(key) && line.size() > key.size() &&
            blanks.find(line[key.size()]) != std::string_view::npos) {
            interface = trimmed(line.substr(key.size()));
        }
    }
    return interface;
}

} // namespace

Point check_dhcp_settings(const Facts& facts) {
    Point point("dhcp server");
    // The shell takes blanks away; a carriage return it keeps.
    std::string path = facts.config.dhcpd_conf;
    path.erase(0, path.find_first_not_of(" \t"));
    path.erase(path.find_last_not_of(" \t") + 1);
    path = path.empty() ? usual_settings : path;
    point.found = printable(path);
    if (const std::string why = why_unreadable(path); !why.empty()) {
        point.bad(quoted(path) + ": " + why +
                      "; as owner of the group the device serves no addresses, "
                      "and the run does not notice it",
                  "", "write it: start, end, interface " + printable(facts.config.interface_name));
        return point;
    }
    const std::string interface = interface_in(path);
    if (interface != facts.config.interface_name) {
        point.bad(
            "it serves the interface " + quoted(interface) + " and not " +
                quoted(facts.config.interface_name) +
                ": as owner of the group the device serves no addresses there, and the run does "
                "not notice it",
            "", "interface " + printable(facts.config.interface_name) + " in " + printable(path));
    }
    return point;
}

} // namespace wivex::doctor

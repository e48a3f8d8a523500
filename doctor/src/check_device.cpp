// SPDX-License-Identifier: Apache-2.0
// The points that every run meets: root, module list, interface; and the clock.
#include "checks.hpp"
#include "common/files.hpp"
#include "common/known_modules.hpp"
#include "common/process_state.hpp"
#include "predicted_texts.hpp"
#include "probe.hpp"
#include "run/readiness.hpp"
#include "text.hpp"
#include "tool_console.hpp"

#include <fcntl.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <ctime>

namespace wivex::doctor {

namespace {

using namespace predicted;
constexpr std::string_view usbfs_list = "/proc/bus/usb/devices";
constexpr const char* debugfs_list = "/sys/kernel/debug/usb/devices";
constexpr unsigned long up_flag = 1;

struct KernelVersion {
    int major = 0;
    int minor = 0;
    std::string text;
};

KernelVersion kernel_version() {
    utsname names{};
    KernelVersion version;
    if (uname(&names) == 0) {
        char* end = nullptr;
        version.text = &names.release[0];
        version.major = static_cast<int>(std::strtol(&names.release[0], &end, 10));
        version.minor = *end == '.' ? static_cast<int>(std::strtol(end + 1, nullptr, 10)) : 0;
    }
    return version;
}

bool kernel_has_usbfs(const KernelVersion& kernel) {
    return kernel.major < 3 || (kernel.major == 3 && kernel.minor < 5);
}

// Every pair of ids that the list shows, as "0a5c:bd27".
std::string ids_in(const std::string& list) {
    FileReader file(open_file(list.c_str(), O_RDONLY | O_NONBLOCK));
    std::array<char, 512> buffer{};
    std::string ids;
    int count = 0;
    while (file && file.read_line(buffer)) {
        const std::string_view line(buffer.data());
        const std::size_t vendor = line.find("Vendor=");
        const std::size_t product = line.find("ProdID=");
        if (vendor == std::string_view::npos || product == std::string_view::npos) {
            continue;
        }
        constexpr int most_shown = 12;
        if (++count <= most_shown) {
            ids += (ids.empty() ? "" : ", ") + std::string(line.substr(vendor + 7, 4)) + ":" +
                   std::string(line.substr(product + 7, 4));
        }
    }
    return ids.empty() ? "no device" : printable(ids);
}

std::string known_ids() {
    std::string text;
    for (const KnownModule& module : known_modules) {
        const std::string_view listed = module.listed_as;
        text +=
            (text.empty() ? "" : ", ") + std::string(listed.substr(7, 4)) + ":" + module.product_id;
    }
    return text;
}

// How the configuration makes the run read another list.
std::string mend_list(const Facts& facts, const KernelVersion& kernel) {
    if (kernel_has_usbfs(kernel)) {
        return "mount -t usbfs none /proc/bus/usb; write device_type=USB in " + facts.config_path;
    }
    const std::string mount =
        access(debugfs_list, F_OK) == 0 ? "" : "mount -t debugfs none /sys/kernel/debug; ";
    if (facts.config.usbdevlist == debugfs_list) {
        return mount.empty() ? "connect the module" : mount + "then ask again";
    }
    return mount + "write device_type=usb and usbdevlist=" + debugfs_list + " in " +
           printable(facts.config_path);
}

// The run mounts the list of an old kernel itself. Whether that works is seen only by doing it.
bool run_will_mount(const Facts& facts, const KernelVersion& kernel) {
    return facts.config.usbdevlist == usbfs_list && kernel_has_usbfs(kernel);
}

void tell_unreadable_list(Point& point, const Facts& facts, const std::string& why) {
    const KernelVersion kernel = kernel_version();
    const std::string& list = facts.config.usbdevlist;
    if (list.empty()) {
        point.bad("the configuration names no device list: usbdevlist is empty, and device_type is "
                  "neither USB nor PCIE",
                  module_absent, mend_list(facts, kernel));
        return;
    }
    const std::string what = quoted(list) + ": " + why;
    if (run_will_mount(facts, kernel)) {
        point.unknown(what + "; the run mounts it first, and whether that works cannot be seen",
                      module_absent, mend_list(facts, kernel));
    } else if (list == usbfs_list && !kernel_has_usbfs(kernel)) {
        point.bad(what + "; kernel " + printable(kernel.text) +
                      " has no usbfs, which ended with 3.5",
                  module_absent, mend_list(facts, kernel));
    } else {
        point.bad(what, module_absent, mend_list(facts, kernel));
    }
}

std::string name_of_driver(const std::string& interface) {
    const std::string name = link_name("/sys/class/net/" + interface + "/device/driver");
    return name.empty() ? "a driver that sysfs does not name" : "driver " + printable(name);
}

void judge_interface(Point& point, const Facts& facts, std::int32_t status,
                     const std::string& path) {
    const std::string flags = line_of(path);
    if (status == interface_status::unreadable) {
        if (facts.config.wifidev.empty() || facts.config.interface_name.empty()) {
            point.bad(std::string(facts.config.wifidev.empty() ? "wifidev" : "interface_name") +
                          " is empty, so the run looks for " + quoted(path),
                      driver_absent,
                      "write wifidev=/sys/class/net and interface_name=wlan0 in " +
                          printable(facts.config_path));
            return;
        }
        const std::string folder = facts.config.wifidev;
        std::string there;
        for (const std::string& name : names_in(folder)) {
            there += " " + printable(name);
        }
        point.bad(quoted(path) + " is not there; in " + quoted(folder) + ":" +
                      (there.empty() ? " nothing" : there),
                  driver_absent,
                  "load the driver (dmesg tells why it did not come up), or set wifidev and "
                  "interface_name in " +
                      printable(facts.config_path));
        return;
    }
    const unsigned long value = std::strtoul(flags.c_str(), nullptr, 16);
    if (status == interface_status::flag_clear && (value & up_flag) != 0) {
        point.bad("up, but its flags " + printable(flags) +
                      " are read as a decimal number, whose last bit is 0",
                  interface_down,
                  "take away the flag that puts a letter there, for example: ifconfig " +
                      shell_word(facts.config.interface_name) + " -promisc -allmulti");
        return;
    }
    if (status == interface_status::flag_clear) {
        point.unknown("down (flags " + printable(flags) +
                          "); the run tries to bring it up, and whether that works cannot be seen",
                      interface_down,
                      "ifconfig " + shell_word(facts.config.interface_name) + " up");
    }
}

} // namespace

Point check_root(const Facts& facts) {
    Point point("root");
    if (geteuid() == 0) {
        point.found = "user id 0";
        return point;
    }
    point.found = "user id " + std::to_string(geteuid());
    const bool takes_address = facts.plan.uses_supplicant() && facts.plan.mode != 'g';
    point.bad("the run and its tools need root; what follows is what this user sees",
              takes_address ? "Fail to run dhclient!!!" : "",
              "run both as root: sudo wivex-doctor ...");
    return point;
}

Point check_module_list(Facts& facts) {
    Point point("module");
    const std::string& list = facts.config.usbdevlist;
    point.found = printable(list);
    const std::string why = list.empty() ? "no name" : why_unreadable(list);
    if (!why.empty()) {
        tell_unreadable_list(point, facts, why);
        return point;
    }
    facts.chip_type = detect_usb_chip(list, facts.config);
    run_options.chip_type = facts.chip_type;
    static_cast<void>(take_tool_output());
    if (facts.chip_type == 0) {
        const bool pci = list == "/proc/bus/pci/devices";
        point.bad("no known module (" + known_ids() + ") in it; it shows " + ids_in(list),
                  module_absent,
                  pci ? "none for device_type=PCIE: no line of this list can match"
                      : "connect the module, its cable and its supply; or " +
                            mend_list(facts, kernel_version()));
        return point;
    }
    const auto* const module = std::find_if(
        known_modules.begin(), known_modules.end(),
        [&facts](const KnownModule& known) { return known.chip_type == facts.chip_type; });
    const std::string_view listed = module->listed_as;
    point.found =
        std::string(listed.substr(7, 4)) + ":" + module->product_id + " in " + printable(list);
    return point;
}

Point check_interface(const Facts& facts) {
    Point point("driver");
    const std::string path = interface_flags_path(facts.config);
    std::int32_t status = interface_status::ready;
    if (const std::string why = why_unreadable(path); !why.empty()) {
        status = interface_status::unreadable;
    } else {
        read_interface_flag(path, 1, status);
    }
    static_cast<void>(take_tool_output());
    point.found = printable(facts.config.interface_name) + ", " +
                  name_of_driver(facts.config.interface_name) + ", kernel " +
                  printable(kernel_version().text);
    judge_interface(point, facts, status, path);
    if (facts.plan.softap && status == interface_status::ready) {
        point.bad("the interface is up, and the verdict of -A is inverted: it is good only while "
                  "the driver check fails",
                  softap_problem, "");
    }
    return point;
}

Point check_clock(const Facts& /*facts*/) {
    Point point("clock");
    constexpr std::time_t year_2000 = 946'684'800;
    const std::time_t now = std::time(nullptr);
    std::array<char, 32> text{};
    std::tm parts{};
    if (gmtime_r(&now, &parts) != nullptr) {
        std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M UTC", &parts);
    }
    point.found = text.data();
    if (now < year_2000) {
        point.bad(
            "it was never set; when something sets it during the run, every wait that goes on "
            "ends at once",
            "", "date -s 'YYYY-MM-DD hh:mm'");
    }
    return point;
}

} // namespace wivex::doctor

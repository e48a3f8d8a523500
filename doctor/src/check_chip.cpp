// SPDX-License-Identifier: Apache-2.0
// The doors through which -M and -l reach the chip. They are looked at, nobody goes through: the
// chip is asked by the run alone.
#include "checks.hpp"
#include "common/known_modules.hpp"
#include "diag/loopback_qca_combo.hpp"
#include "diag/private_ioctls.hpp"
#include "diag/register_files.hpp"
#include "predicted_texts.hpp"
#include "probe.hpp"
#include "text.hpp"
#include "tool_console.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statfs.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace wivex::doctor {

namespace {

using namespace predicted;
constexpr std::size_t longest_command = 127;
constexpr const char* diag_device = "/proc/cld/athdiagpfs";
constexpr const char* loopback_request = "getusbcontx";
constexpr unsigned loopback_number = 56;
constexpr const char* debugfs = "/sys/kernel/debug";
constexpr const char* mount_debugfs = "mount -t debugfs none /sys/kernel/debug";

void judge_no_chip(const Facts& facts, Point& point) {
    point.found = "no module whose chip can be asked";
    if (facts.plan.mac) {
        point.bad("-M has nothing to compare the address with", addresses_differ,
                  "run without -M, or see the point module");
    }
    if (facts.plan.loopback) {
        point.bad("-l has no loopback for this chip", not_supported,
                  "run without -l, or see the point module");
    }
}

void judge_broadcom(const Facts& facts, Point& point) {
    const std::string driver = link_name("/sys/class/net/wlan0/device/driver");
    point.found = "Broadcom, asked through the driver bcmdhd of wlan0";
    const bool loaded = access("/sys/module/bcmdhd", F_OK) == 0;
    if (loaded && (driver.empty() || driver.find("brcm") == std::string::npos)) {
        return;
    }
    const std::string what =
        driver.empty() ? std::string("sysfs shows neither a module bcmdhd nor the driver of wlan0")
                       : "wlan0 belongs to the driver " + printable(driver);
    const char* const prints = facts.plan.mac ? mac_fails : loopback_fails;
    const std::string mend = "load bcmdhd: insmod .../bcmdhd.ko, or modprobe bcmdhd";
    if (driver.starts_with("brcmf") || driver.starts_with("brcms")) {
        point.bad(what + ", which does not know these requests", prints, mend);
    } else {
        point.unknown(what + "; whether it knows these requests shows only when it is asked",
                      prints, mend);
    }
}

void judge_combo_loopback(Point& point) {
    const UniqueFd socket = open_request_socket();
    std::vector<iw_priv_args> table;
    const int count = socket ? get_priv_ioctls(socket.get(), driver_interface, table) : -1;
    static_cast<void>(take_tool_output());
    const char* const mend = "load the QCA combo driver in place of the kernel's own";
    if (!socket) {
        point.unknown(std::string("no socket to ask the driver through: ") + std::strerror(errno),
                      "", "ulimit -n");
        return;
    }
    if (count <= 0) {
        point.bad("the driver of wlan0 lists no private requests", no_private_requests, mend);
        return;
    }
    const std::size_t index = find_private_ioctl(table, loopback_request);
    if (index >= table.size()) {
        point.bad("none of the " + std::to_string(count) + " private requests of wlan0 is " +
                      loopback_request,
                  no_loopback_request, mend);
    } else if (table[index].cmd != loopback_number) {
        point.bad(std::string(loopback_request) + " has the number " +
                      std::to_string(table[index].cmd) + ", and must have 56",
                  no_loopback_request, "load the version of the combo driver that has it");
    }
}

void judge_combo(const Facts& facts, Point& point) {
    point.found = "QCA combo, asked through private requests and the DIAG device";
    if (facts.plan.loopback) {
        judge_combo_loopback(point);
    }
    if (facts.plan.mac && access(diag_device, R_OK | W_OK) != 0) {
        point.bad(std::string(diag_device) + ": " + std::strerror(errno), no_diag_device,
                  "load the combo driver with its DIAG device");
    }
}

bool is_debugfs_mounted() {
    constexpr long debugfs_magic = 0x64626720;
    struct statfs status {};
    return statfs(debugfs, &status) == 0 && static_cast<long>(status.f_type) == debugfs_magic;
}

bool is_folder(const char* path) {
    struct stat status {};
    return stat(path, &status) == 0 && S_ISDIR(status.st_mode);
}

bool has_register_file(const std::string& phy, const char* name) {
    return access((std::string(phy_root) + "/" + phy + "/ath6kl/" + name).c_str(), F_OK) == 0;
}

// The run takes the first phy of the folder, whoever it belongs to.
void judge_phy(const Facts& facts, const std::string& first, Point& point) {
    const std::string folder = std::string(phy_root) + "/" + first;
    point.found = "ath6kl, asked through " + printable(folder);
    if (fit_command("echo 0x40bf38 > " + folder + "/ath6kl/reg_addr").size() == longest_command) {
        point.unknown("the name of the phy is longer than the run's commands may be", "",
                      "a driver whose phy has the usual name, phy0");
        return;
    }
    if (has_register_file(first, "reg_addr")) {
        if (facts.plan.mac && !has_register_file(first, "reg_dump")) {
            point.bad(printable(folder) + " has no file reg_dump of ath6kl", no_register_dump,
                      "load ath6kl built with its debugfs files");
        }
        return;
    }
    std::string what = printable(folder) + " has no register files of ath6kl";
    std::string mend = "load ath6kl built with its debugfs files";
    for (const std::string& name : names_in(phy_root)) {
        if (name.find("phy") != std::string::npos && has_register_file(name, "reg_addr")) {
            what = "the run takes the first phy, " + printable(first) +
                   ", and the files of the chip are in " + printable(name) +
                   ": another radio hides it";
            mend = "unload the driver of the other radio, then load ath6kl again";
        }
    }
    if (facts.plan.mac) {
        point.bad(what, no_register_files, mend);
    }
    if (facts.plan.loopback) {
        point.bad(what + "; -l passes all the same, without having asked the chip",
                  folder + "/ath6kl/aow", mend);
    }
}

void judge_ath6kl(const Facts& facts, Point& point) {
    point.found = std::string("ath6kl, asked through ") + phy_root;
    if (!is_folder(phy_root)) {
        const char* const lack = access(phy_root, F_OK) == 0 ? " is no folder" : " is not there";
        const std::string what = std::string(phy_root) + lack;
        if (facts.plan.mac) {
            point.bad(what, no_phy, is_debugfs_mounted() ? "load ath6kl" : mount_debugfs);
        }
        if (facts.plan.loopback && is_debugfs_mounted()) {
            point.bad(what + ", though debugfs is mounted", no_debugfs, "load ath6kl");
        } else if (facts.plan.loopback) {
            point.unknown(what + "; -l mounts debugfs, and whether that helps cannot be seen",
                          no_debugfs, mount_debugfs);
        }
        return;
    }
    PhyName phy{};
    const bool found = find_phy_name(phy);
    static_cast<void>(take_tool_output());
    if (!found) {
        point.bad(std::string(phy_root) + " shows no phy", no_phy, "load ath6kl");
        return;
    }
    judge_phy(facts, phy.data(), point);
}

} // namespace

Point check_chip(const Facts& facts) {
    Point point("chip");
    switch (family_of(facts.chip_type)) {
    case ChipFamily::none:
        judge_no_chip(facts, point);
        break;
    case ChipFamily::broadcom:
        judge_broadcom(facts, point);
        break;
    case ChipFamily::qca_combo:
        judge_combo(facts, point);
        break;
    case ChipFamily::ath6kl:
        judge_ath6kl(facts, point);
        break;
    }
    if (facts.plan.mac && !has_interface(driver_interface)) {
        point.bad("there is no interface wlan0, which -M takes whatever interface_name says",
                  no_interface, "rename the interface: ip link set NAME name wlan0");
    }
    return point;
}

} // namespace wivex::doctor

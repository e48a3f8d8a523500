// SPDX-License-Identifier: Apache-2.0
// What -S needs of the kernel: nl80211, its group for scans, and wlan0.
#include "checks.hpp"
#include "diag/netlink.hpp"
#include "diag/request_socket.hpp"
#include "predicted_texts.hpp"
#include "probe.hpp"

#include <netlink/genl/ctrl.h>

namespace wivex::doctor {

namespace {

using namespace predicted;

} // namespace

Point check_kernel_scan(const Facts& /*facts*/) {
    Point point("kernel scan");
    point.found = "nl80211 and wlan0 are there";
    if (!has_interface(driver_interface)) {
        point.bad("there is no interface wlan0, which -S takes whatever interface_name says",
                  scan_fails, "rename the interface: ip link set NAME name wlan0");
        return point;
    }
    const NetlinkSocket socket = open_generic_netlink();
    if (!socket) {
        point.unknown("no memory for a netlink socket", scan_fails, "");
        return point;
    }
    if (genl_ctrl_resolve(socket.get(), "nl80211") < 0) {
        point.bad("the kernel has no nl80211", scan_fails, "modprobe cfg80211, and the driver");
    } else if (genl_ctrl_resolve_grp(socket.get(), "nl80211", "scan") < 0) {
        point.bad("nl80211 has no group that tells the end of a scan", scan_fails,
                  "a kernel whose cfg80211 has it");
    }
    return point;
}

} // namespace wivex::doctor

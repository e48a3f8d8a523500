// SPDX-License-Identifier: Apache-2.0
#include "model/advice.hpp"

#include <algorithm>
#include <array>

namespace wivex::report {

namespace {

// Of several rows of a cause the first whose text stands on the console holds.
constexpr auto rows = std::to_array<AdviceRow>({
    {Cause::module_absent, Mode::unknown, "ERROR:Module not inserted.",
     "does a line of the list say `Vendor=... ProdID=...` of the module? The list of kernels from "
     "3.5 on is `/sys/kernel/debug/usb/devices`: debugfs must be mounted (`mount -t debugfs none "
     "/sys/kernel/debug`), `usbdevlist` name this file and `device_type` be neither `USB` nor "
     "`PCIE` "
     "but, for example, `usb`. That of older kernels is `/proc/bus/usb/devices` (usbfs), with "
     "`device_type=USB`. Then cable and supply. With `PCIE` this check always fails: no line of "
     "that "
     "list can match"},
    {Cause::driver_absent, Mode::unknown, "ERROR:WiFi driver is not insmoded properly",
     "`lsmod`, `dmesg`, `ls /sys/class/net`; are both keys spelt right, without a blank or "
     "carriage return behind them?"},
    {Cause::interface_down, Mode::unknown, "ERROR:WiFi network interface not up",
     "`cat /sys/class/net/wlan0/flags`. 0x1002: down; the tool brings it up once at its start, so "
     "something took it down since, or `ifconfig` failed (rfkill, firmware). A value with a letter "
     "such as 0x100b is up and counts as down all the same"},
    {Cause::mac_differs, Mode::unknown, "Failed to create the socket",
     "descriptor limit; does the kernel have IPv4?"},
    {Cause::mac_differs, Mode::unknown, "[401]IOCTL fail",
     "`ifconfig -a`; the interface must be called `wlan0`, whatever `interface_name` says"},
    {Cause::mac_differs, Mode::unknown, "##### ioctl Failed to send driver",
     "is `wlan0` served by the driver of this module?"},
    {Cause::mac_differs, Mode::unknown, "echo /proc/cld/athdiagpfs failed",
     "memory and process limit of the device"},
    {Cause::mac_differs, Mode::unknown, "err firmware_mac_address_qca_combo failed",
     "is the combo driver loaded, does `/proc/cld/athdiagpfs` exist?"},
    {Cause::mac_differs, Mode::unknown, "phy_addr is NULL",
     "`mount -t debugfs none /sys/kernel/debug`; is ath6kl loaded, with its debugfs files?"},
    {Cause::mac_differs, Mode::unknown, "Call to system(", "memory of the device"},
    {Cause::mac_differs, Mode::unknown, "Can not write to reg_addr",
     "run as root? Does `cat .../ath6kl/reg_dump` work by hand? Load the driver again"},
    {Cause::mac_differs, Mode::unknown, "Can not read reg_dump",
     "run as root? Does `cat .../ath6kl/reg_dump` work by hand? Load the driver again"},
    {Cause::mac_differs, Mode::unknown, "Can not read temporary file properly",
     "is `/tmp` full or read-only? Otherwise the driver: its dump has another form"},
    {Cause::mac_differs, Mode::unknown, "Content of file can't be stored in buffer",
     "is `/tmp` full or read-only? Otherwise the driver: its dump has another form"},
    {Cause::mac_differs, Mode::unknown, "Can not remove temp_file1",
     "is `/tmp` read-only, or `rm` missing?"},
    {Cause::mac_differs, Mode::unknown, "Both addresses are not same",
     "the lines before show both; `WIFIAddr` beside the result file holds the chip's and is empty "
     "when there is none. Then the address programmed into the chip, or a script that sets "
     "another"},
    {Cause::loopback_failed, Mode::unknown, "LOOPBACK is not supported for this chip",
     "test case 1"},
    {Cause::loopback_failed, Mode::unknown, "Cannot create socket and gets file descriptor",
     "descriptor limit; does the kernel have IPv4?"},
    {Cause::loopback_failed, Mode::unknown, "Failed to set loopback mode to driver",
     "is it the `bcmdhd` driver that serves `wlan0`?"},
    {Cause::loopback_failed, Mode::unknown, "IOCTL fail for loopback",
     "`dmesg`; `loopback_pkt_size` and `loopback_pkt_cnt`"},
    {Cause::loopback_failed, Mode::unknown, "Loopback fail, status",
     "cable, socket and supply of the module; smaller `loopback_pkt_size`"},
    {Cause::loopback_failed, Mode::unknown, "No private ioctl is for",
     "is the combo driver loaded, and not the kernel's own?"},
    {Cause::loopback_failed, Mode::unknown, "Not Able to find ioctl command",
     "version of the combo driver"},
    {Cause::loopback_failed, Mode::unknown, "Not Able to send ioctl command", "`dmesg`"},
    {Cause::loopback_failed, Mode::unknown, "some error returned by driver",
     "the three counters; cable, socket and supply of the module"},
    {Cause::loopback_failed, Mode::unknown, "Debugfs Mount Error", "does the kernel have debugfs?"},
    {Cause::loopback_failed, Mode::unknown, "phy_addr is NULL", "is ath6kl loaded?"},
    {Cause::loopback_failed, Mode::unknown, "File Error :", "did the module leave the bus?"},
    {Cause::loopback_failed, Mode::unknown, "Unable to start shell",
     "memory and process limit of the device"},
    {Cause::scan_failed, Mode::unknown, "Failed to allocate netlink socket.",
     "memory of the device"},
    {Cause::scan_failed, Mode::unknown, "ERROR: Failed to allocate", "memory of the device"},
    {Cause::scan_failed, Mode::unknown, "error_handler() called.",
     "what else is scanning (the supplicant); `ifconfig wlan0`; `dmesg`"},
    {Cause::scan_failed, Mode::unknown, "ERROR: nl_recvmsgs() returned",
     "what else is scanning (the supplicant); `ifconfig wlan0`; `dmesg`"},
    {Cause::scan_failed, Mode::unknown, "do_scan_trigger() failed with -12.",
     "is `cfg80211` of this kernel loaded?"},
    {Cause::scan_failed, Mode::unknown, "nl_send_auto_complete failed from do_scan_trigger",
     "does the kernel have generic netlink? Descriptor limit"},
    {Cause::scan_failed, Mode::unknown, "do_scan_trigger() failed with 1.",
     "did the interface go down, or the supplicant take over?"},
    {Cause::scan_failed, Mode::unknown, "File open error", "is `/tmp` there, and writable?"},
    {Cause::scan_failed, Mode::unknown, "File write error", "is `/tmp` full?"},
    {Cause::scan_failed, Mode::unknown, "nlmsg_alloc failed", "memory; `dmesg`"},
    {Cause::scan_failed, Mode::unknown, "nl_send_auto_complete failed from execute_scan_nl_command",
     "memory; `dmesg`"},
    {Cause::scan_failed, Mode::unknown, "ERROR: nl_recvmsgs_default() returned", "memory; `dmesg`"},
    {Cause::scan_failed, Mode::unknown, "File: Input/output error",
     "the file that `-D` names: can it be read to its end?"},
    {Cause::session_not_open, Mode::unknown, "Unable to open sockets!!",
     "does the supplicant run on this interface; is its `ctrl_interface` the folder of "
     "`ctrl_iface`; run as root; is `/tmp` writable?"},
    {Cause::session_not_open, Mode::unknown, "Unable to attach event socket!!",
     "is the supplicant stopped or stuck? Restart it"},
    {Cause::session_lost, Mode::unknown, "Unable to open sockets..quitting",
     "does the supplicant still run? Restart it"},
    {Cause::target_missing, Mode::unknown, "error in config file: missing target mac address",
     "the configuration file"},
    {Cause::scan_busy, Mode::unknown, "ERROR:SCAN FAIL-BUSY", "what else is scanning?"},
    {Cause::scan_rejected, Mode::unknown, "ERROR:SCAN-FAIL",
     "is the interface up, the module still on the bus? Does the supplicant still run?"},
    {Cause::network_not_found, Mode::unknown, "scan_results Command not successful",
     "restart the supplicant"},
    {Cause::network_not_found, Mode::unknown, "Fail to send Scan_Results Command!!!",
     "is the access point on, on a band and channel of the module, its name right? The first 1247 "
     "bytes of the listing count, about 15 access points. Names with a quote or a backslash are "
     "escaped there and never found"},
    {Cause::network_not_added, Mode::unknown, "ERROR:ADD_NETWORK COMMAND FAILED",
     "restart the supplicant"},
    {Cause::network_not_set, Mode::unknown, "ERROR:SET_NETWORK COMMAND FAILED",
     "`psk`: a pass phrase has 8 to 63 characters. `proto`, `key_mgmt`: the access point is open "
     "or of a kind that is not known. `ssid`: 32 bytes at most"},
    {Cause::network_not_selected, Mode::unknown, "SELECT_NETWORK Command is",
     "restart the supplicant"},
    {Cause::network_not_selected, Mode::unknown, "reason=WRONG_KEY",
     "`go_passphrase`, to the letter: a blank or a carriage return at the end of its line belongs "
     "to "
     "it"},
    {Cause::network_not_selected, Mode::unknown, "Unable to Connect Time out!!!",
     "pass phrase, signal, security of the access point; `-u` shows the supplicant's reasons"},
    {Cause::iperf_client, Mode::unknown, "Unable to run Iperf in Client mode!!!",
     "memory and process limit. An `iperf` that is missing or finds no server is not noticed"},
    {Cause::network_not_disabled, Mode::unknown, "DISABLE_NETWORK Command is",
     "does it still run?"},
    {Cause::network_not_disabled, Mode::unknown,
     "Timeout waiting for CTRL-EVENT-DISCONNECTED event", "did the supplicant lose the interface?"},
    {Cause::peer_not_found, Mode::unknown, "FAILED:P2P_FIND",
     "was it built for P2P, is P2P enabled on this interface (`p2p_disabled`)?"},
    {Cause::peer_not_found, Mode::unknown, "P2P FIND: TIME OUT !!",
     "is the peer on and listening; is `p2p_target_device_mac` its device address in small "
     "letters, as the supplicant prints it (`-u`)?"},
    {Cause::not_connected, Mode::device, "connect:TEST CASE FAIL",
     "is `starting_go_intent` 0 to 15? Is the peer still listed?"},
    {Cause::not_connected, Mode::client, "Failed to send P2P_CONNECT command to wpa_supplicant",
     "does the peer own a group?"},
    {Cause::not_connected, Mode::client, "CONNECT:TEST CASE FAIL",
     "push button on the peer; signal"},
    {Cause::address_not_set, Mode::unknown, "Unable to assign ip to",
     "memory and process limit of the device. A command that starts and fails is not noticed: its "
     "own message stands on the console"},
    {Cause::dhcp_server, Mode::unknown, "Unable to start dhcpd",
     "memory and process limit of the device. A command that starts and fails is not noticed: its "
     "own message stands on the console"},
    {Cause::dhcp_client, Mode::device, "Fail to start udhcpc!!!",
     "does the owner serve addresses, is `udhcpc` installed?"},
    {Cause::dhcp_client, Mode::client, "Fail to start udhcpc!!!",
     "does the owner serve addresses, is `udhcpc` installed?"},
    {Cause::dhcp_client, Mode::legacy, "ERROR:UDHCHPC START FAILED",
     "does the access point serve addresses, is `udhcpc` installed?"},
    {Cause::no_group_started, Mode::unknown, "Unable to recieve P2P-GROUP-STARTED event.",
     "push button on the peer; the same channel; `-u` shows why negotiation failed"},
    {Cause::group_not_added, Mode::unknown, "unable to start p2p group",
     "`go_ssid` begins with `DIRECT-` and two characters, `go_passphrase` has 8 to 63 characters; "
     "is P2P enabled?"},
    {Cause::group_not_added, Mode::unknown, "Unable to get P2P-GROUP-STARTED event.",
     "`dmesg`; may this channel be used (regulatory domain)?"},
    {Cause::iperf_server, Mode::unknown, "Unable to start iperf server.",
     "memory and process limit of the device. An `iperf` that ends at once is not noticed"},
    {Cause::group_not_removed, Mode::unknown, "disconnect:TEST CASE FAIL",
     "is `interface_name` the interface of the group (`p2p_no_group_iface=1`)? Or the peer ended "
     "it first"},
    {Cause::prefix_not_found, Mode::unknown, "AP with prefix not found",
     "is the prefix right, the access point on?"},
    {Cause::listing_empty, Mode::unknown, "SCAN SUCCESS AND RUN IN SHIELD ROOM",
     "antenna and its cable, unless the room is shielded"},
    {Cause::client_not_connected, Mode::unknown, "Client not able to connect",
     "restart the mode; the peer and its distance"},
    {Cause::no_traffic_figure, Mode::unknown, "Run Iperf Successful",
     "is `iperf` installed; does a server run at `p2p_iface_ip`?"},
    {Cause::diag_read, Mode::unknown, "err ReadTargetRange failed",
     "load the combo driver again; supply of the module"},
});

// Causes that can be seen before a run.
constexpr auto seen_by_the_doctor = std::to_array<Cause>(
    {Cause::module_absent, Cause::driver_absent, Cause::interface_down, Cause::session_not_open,
     Cause::target_missing, Cause::no_traffic_figure});
constexpr std::string_view ask_the_doctor =
    "`wivex-doctor` with the options of this run tells what is not ready, and what mends it";

bool is_for(const AdviceRow& row, Cause cause, Mode mode) {
    return row.cause == cause &&
           (row.mode == Mode::unknown || mode == Mode::unknown || row.mode == mode);
}

bool told(const Failure& failure, std::string_view text) {
    return std::ranges::any_of(failure.lines, [&](const std::string& line) {
        return line.find(text) != std::string::npos;
    });
}

void add_once(std::vector<std::string_view>& list, std::string_view advice) {
    if (std::ranges::find(list, advice) == list.end()) {
        list.push_back(advice);
    }
}

} // namespace

std::span<const AdviceRow> advice_rows() {
    return rows;
}

std::vector<std::string_view> advice_on(const Run& run, Cause cause) {
    std::vector<std::string_view> list;
    for (const Failure& failure : run.failures) {
        if (failure.cause != cause) {
            continue;
        }
        const auto* const found = std::ranges::find_if(rows, [&](const AdviceRow& row) {
            return is_for(row, cause, run.mode) && told(failure, row.text);
        });
        if (found != rows.end()) {
            add_once(list, found->look_at);
        }
    }
    const bool told_of = !list.empty();
    for (const AdviceRow& row : rows) {
        if (!told_of && is_for(row, cause, run.mode)) {
            add_once(list, row.look_at);
        }
    }
    if (std::ranges::find(seen_by_the_doctor, cause) != seen_by_the_doctor.end()) {
        list.push_back(ask_the_doctor);
    }
    return list;
}

} // namespace wivex::report

// SPDX-License-Identifier: Apache-2.0
#include "model/advice.hpp"

#include "model/failure_codes_table.hpp"

#include <algorithm>
#include <array>

namespace wivex::report {

namespace {

constexpr int anywhere = 0;

/// A console text that leads to a cause, and where the document tells of it.
struct Symptom {
    Cause cause;
    std::string_view text;
    /// The test case under which the document has it, where others have the same text.
    int test_case = anywhere;
    Mode mode = Mode::unknown;
};

// Of several rows of a cause the first whose text stands on the console holds.
constexpr auto symptoms = std::to_array<Symptom>({
    {Cause::module_absent, "ERROR:Module not inserted."},
    {Cause::driver_absent, "ERROR:WiFi driver is not insmoded properly"},
    {Cause::interface_down, "ERROR:WiFi network interface not up"},
    {Cause::mac_differs, "Failed to create the socket", 3},
    {Cause::mac_differs, "[401]IOCTL fail", 3},
    {Cause::mac_differs, "##### ioctl Failed to send driver", 3},
    {Cause::mac_differs, "echo /proc/cld/athdiagpfs failed", 3},
    {Cause::mac_differs, "err firmware_mac_address_qca_combo failed", 3},
    {Cause::mac_differs, "phy_addr is NULL", 3},
    {Cause::mac_differs, "Call to system(", 3},
    {Cause::mac_differs, "Can not write to reg_addr", 3},
    {Cause::mac_differs, "Can not read reg_dump", 3},
    {Cause::mac_differs, "Can not read temporary file properly", 3},
    {Cause::mac_differs, "Content of file can't be stored in buffer", 3},
    {Cause::mac_differs, "Can not remove temp_file1", 3},
    {Cause::mac_differs, "Both addresses are not same", 3},
    {Cause::loopback_failed, "LOOPBACK is not supported for this chip", 4},
    {Cause::loopback_failed, "Cannot create socket and gets file descriptor", 4},
    {Cause::loopback_failed, "Failed to set loopback mode to driver", 4},
    {Cause::loopback_failed, "IOCTL fail for loopback", 4},
    {Cause::loopback_failed, "Loopback fail, status", 4},
    {Cause::loopback_failed, "No private ioctl is for", 4},
    {Cause::loopback_failed, "Not Able to find ioctl command", 4},
    {Cause::loopback_failed, "Not Able to send ioctl command", 4},
    {Cause::loopback_failed, "some error returned by driver", 4},
    {Cause::loopback_failed, "Debugfs Mount Error", 4},
    {Cause::loopback_failed, "phy_addr is NULL", 4},
    {Cause::loopback_failed, "File Error :", 4},
    {Cause::loopback_failed, "Unable to start shell", 4},
    {Cause::scan_failed, "Failed to allocate netlink socket.", 5},
    {Cause::scan_failed, "ERROR: Failed to allocate", 5},
    {Cause::scan_failed, "error_handler() called.", 5},
    {Cause::scan_failed, "ERROR: nl_recvmsgs() returned", 5},
    {Cause::scan_failed, "do_scan_trigger() failed with -12.", 5},
    {Cause::scan_failed, "nl_send_auto_complete failed from do_scan_trigger", 5},
    {Cause::scan_failed, "do_scan_trigger() failed with 1.", 5},
    {Cause::scan_failed, "File open error", 5},
    {Cause::scan_failed, "File write error", 5},
    {Cause::scan_failed, "nlmsg_alloc failed", 5},
    {Cause::scan_failed, "nl_send_auto_complete failed from execute_scan_nl_command", 5},
    {Cause::scan_failed, "ERROR: nl_recvmsgs_default() returned", 5},
    {Cause::scan_failed, "File: Input/output error", 5},
    {Cause::session_not_open, "Unable to open sockets!!"},
    {Cause::session_not_open, "Unable to attach event socket!!"},
    {Cause::session_lost, "Unable to open sockets..quitting"},
    {Cause::target_missing, "error in config file: missing target mac address"},
    {Cause::scan_busy, "ERROR:SCAN FAIL-BUSY"},
    {Cause::scan_rejected, "ERROR:SCAN-FAIL"},
    {Cause::network_not_found, "scan_results Command not successful"},
    {Cause::network_not_found, "Fail to send Scan_Results Command!!!"},
    {Cause::network_not_added, "ERROR:ADD_NETWORK COMMAND FAILED"},
    {Cause::network_not_set, "ERROR:SET_NETWORK COMMAND FAILED"},
    {Cause::network_not_selected, "SELECT_NETWORK Command is"},
    {Cause::network_not_selected, "reason=WRONG_KEY"},
    {Cause::network_not_selected, "Unable to Connect Time out!!!"},
    {Cause::iperf_client, "Unable to run Iperf in Client mode!!!"},
    {Cause::network_not_disabled, "DISABLE_NETWORK Command is"},
    {Cause::network_not_disabled, "Timeout waiting for CTRL-EVENT-DISCONNECTED event"},
    {Cause::peer_not_found, "FAILED:P2P_FIND"},
    {Cause::peer_not_found, "P2P FIND: TIME OUT !!"},
    {Cause::not_connected, "connect:TEST CASE FAIL", 6, Mode::device},
    {Cause::not_connected, "Failed to send P2P_CONNECT command to wpa_supplicant", 9, Mode::client},
    {Cause::not_connected, "CONNECT:TEST CASE FAIL", 9, Mode::client},
    {Cause::address_not_set, "Unable to assign ip to"},
    {Cause::dhcp_server, "Unable to start dhcpd"},
    {Cause::dhcp_client, "Fail to start udhcpc!!!", 6, Mode::device},
    {Cause::dhcp_client, "Fail to start udhcpc!!!", 9, Mode::client},
    {Cause::dhcp_client, "ERROR:UDHCHPC START FAILED", anywhere, Mode::legacy},
    {Cause::no_group_started, "Unable to recieve P2P-GROUP-STARTED event."},
    {Cause::group_not_added, "unable to start p2p group"},
    {Cause::group_not_added, "Unable to get P2P-GROUP-STARTED event."},
    {Cause::iperf_server, "Unable to start iperf server."},
    {Cause::group_not_removed, "disconnect:TEST CASE FAIL"},
    {Cause::prefix_not_found, "AP with prefix not found"},
    {Cause::listing_empty, "SCAN SUCCESS AND RUN IN SHIELD ROOM"},
    {Cause::client_not_connected, "Client not able to connect"},
    {Cause::no_traffic_figure, "Run Iperf Successful"},
    {Cause::diag_read, "err ReadTargetRange failed"},
});

// Of several rows of the document the one that names the text first in its cell.
constexpr std::string_view advice_for(const Symptom& symptom) {
    std::size_t earliest = std::string_view::npos;
    std::string_view advice;
    for (const DocumentRow& row : failure_codes_table) {
        const std::size_t at = row.console.find(symptom.text);
        if (at < earliest &&
            (symptom.test_case == anywhere || symptom.test_case == row.test_case)) {
            earliest = at;
            advice = row.look_at;
        }
    }
    return advice;
}

constexpr auto rows = [] {
    std::array<AdviceRow, symptoms.size()> list{};
    std::ranges::transform(symptoms, list.begin(), [](const Symptom& symptom) {
        return AdviceRow{symptom.cause, symptom.mode, symptom.text, advice_for(symptom)};
    });
    return list;
}();
static_assert(std::ranges::none_of(rows, [](const AdviceRow& row) { return row.look_at.empty(); }),
              "docs/failure-codes.md tells of every symptom");
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

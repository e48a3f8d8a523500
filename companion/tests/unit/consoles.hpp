// SPDX-License-Identifier: Apache-2.0
// Consoles as the tool prints them, for the tests to put together.
#pragma once

#include "reader/run_reader.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>

namespace report_test {

inline const std::string banner = "\n[WIFI]WIVEX2_0_160421_INCREASE_SCAN_RESULT_SIZE\n\n"
                                  "[WIFI]This build is compiled on May 13 2016, 02:36:07.\n"
                                  "[WIFI]Reading Conf file: /lib/modules/wifi/wivex.cfg\n"
                                  "[WIFI]USBFS is already Mounted\n[WIFI]USBFS is Mounted\n";

inline const std::string checks_pass = "\n[WIFI]Chip type is = 2\n"
                                       "[WIFI]Chip vendor id = 0cf3 and product id 9378\n"
                                       "[WIFI]MODULE CONNECTED\n[WIFI]WIFI DRIVER READY\n";

inline const std::string session_closes =
    "[WIFI]Here at 217 wpa_ctrl_close...\nValue of sigterm_var is 0 ...\n"
    "[WIFI]Here at 217 wpa_ctrl_close...\nValue of sigterm_var is 0 ...\n";

inline const std::string scan_and_associate =
    "Scan Command Sent Successfully...\nline-apis found...\n"
    "Scan_Results Command Sent Successfully...\nCall to ADD_NETWORK is Successful...\n"
    "Result of cmd_to_setnetwork function is 0\nCall to SELECT_NETWORK is Successful...\n";

inline const std::string take_address =
    "Executing dhclient...\nudhcpc -i wlan0 --now.\n"
    "udhcpc: lease of 192.168.49.40 obtained from 192.168.49.1, lease time 600\n"
    "Command to udhcpc is successful...\n";

inline const std::string traffic =
    "[  3]  0.0- 1.0 sec  11.0 MBytes  92.3 Mbits/sec\n"
    "[  3]  1.0- 2.0 sec  11.4 MBytes  95.6 Mbits/sec\n"
    "[  3]  0.0- 2.0 sec  22.4 MBytes  94.0 Mbits/sec\nRun Iperf Successful...\n";

inline const std::string disconnect =
    "DISABLE_NETWORK 0 \nCall to DISABLE_NETWORK is successful...\n";

inline const std::string legacy_pass =
    checks_pass + scan_and_associate + take_address + traffic + disconnect + session_closes;

// A pass with another throughput, of four characters.
inline std::string legacy_pass_at(const std::string& megabits) {
    std::string pass = legacy_pass;
    pass.replace(pass.find("94.0 Mbits"), 4, megabits);
    return pass;
}

// The mode goes on without an address.
inline const std::string without_address = checks_pass + scan_and_associate +
                                           "Executing dhclient...\nFail to start udhcpc!!!\n"
                                           "ERROR:UDHCHPC START FAILED\n" +
                                           traffic + disconnect + session_closes;

inline const std::string refused = checks_pass +
                                   "Scan Command not successful\n"
                                   "Fail to send Scan Command!!!\nERROR:SCAN-FAIL\n" +
                                   session_closes;

inline const std::string client_until_connected =
    checks_pass + "wpa_state=DISCONNECTED\n\nSent P2P_GROUP_REMOVE wlan0command to "
                  "wpa_supplicant:\nSUCCESS:P2P_FIND\nSent P2P_FIND command to "
                  "wpa_supplicant:OK\n\nMATCH FOUND!!!02:00:00:00:00:01\n"
                  "P2P_CONNECT 02:00:00:00:00:01 pbc join persistent\n"
                  "SentP2P_CONNECT 02:00:00:00:00:01 pbc join persistentcommand to "
                  "wpa_supplicant:OK\n\nclient Connected...\n";

inline const std::string device_until_role =
    checks_pass + "Sent P2P_GROUP_REMOVE wlan0command to wpa_supplicant:\n\n"
                  "---------------------------------------------------\nSUCCESS:P2P_FIND\n"
                  "MATCH FOUND!!!02:00:00:00:00:01\n"
                  "15 seconds waiting for go negotiation request from 02:00:00:00:00:01.\n"
                  "Didnot receive a P2P-GO-NEG-REQUEST.Sending a connect request.\n"
                  "P2P_CONNECT 02:00:00:00:00:01 pbc  go_intent=15\nOK\n\n"
                  "Sent P2P_CONNECT 02:00:00:00:00:01 pbc  go_intent=15 command to "
                  "wpa_supplicant:OK\n\n[WIFI]Testing for client\n";

inline const std::string group_began = checks_pass + "P2P group started bench-ap \n";

inline const std::string clean_up =
    "[WIFI]Cleanup\n[WIFI]Set value of sigterm_var\n[WIFI]Closing the ctrl sockets\n"
    "[WIFI]Closing the Event sockets\n[WIFI]Reset Value of sigterm_var\n";

inline const std::string end = "[WIFI]ResultFile: /root/WIFIResult Updated\n" + clean_up;

inline const std::string passed_run = banner + legacy_pass + end;

// An iteration that fails between two that pass.
inline const std::string mixed = banner + legacy_pass + refused + legacy_pass + end;

inline const std::string interrupt =
    "[WIFI] Got ^C. Writing results to file before quitting.Please hold on...\n"
    "[WIFI]ResultFile: /root/WIFIResult Updated\n"
    "[WIFI] Before resultFile.flush call \n" +
    clean_up + "[WIFI] Done..\n";

inline std::string without(std::string console, std::string_view part) {
    const std::size_t at = console.find(part);
    EXPECT_NE(at, std::string::npos) << part;
    return console.erase(at, part.size());
}

// As a logging tool writes it: `stamp_of` gives what stands before a line, counted from 0.
template <typename StampOf>
std::string stamped_lines(const std::string& console, const StampOf& stamp_of) {
    std::string text;
    int number = 0;
    for (std::size_t at = 0; at < console.size();) {
        const std::size_t newline = std::min(console.find('\n', at), console.size() - 1);
        text += stamp_of(number) + " " + console.substr(at, newline - at + 1);
        ++number;
        at = newline + 1;
    }
    return text;
}

inline wivex::report::Log read(std::string_view console,
                               const wivex::report::ReaderOptions& options = {}) {
    wivex::report::RunReader reader(options);
    reader.feed(console);
    reader.finish();
    return reader.log();
}

inline wivex::report::Run read_run(std::string_view console,
                                   const wivex::report::ReaderOptions& options = {}) {
    const wivex::report::Log log = read(console, options);
    return log.runs.empty() ? wivex::report::Run() : log.runs.back();
}

} // namespace report_test

// SPDX-License-Identifier: Apache-2.0
// What the legacy WLAN mode has printed after each of its steps when all of them go well.
#pragma once

#include <string>

namespace test_texts {

struct LegacyConsole {
    std::string scanned;
    std::string listed;
    std::string added;
    std::string configured;
    std::string selected;
    std::string addressed;
    std::string unmeasured;
};

inline LegacyConsole legacy_console(const std::string& ssid) {
    LegacyConsole texts;
    texts.scanned = "Scan Command Sent Successfully...\n";
    texts.listed =
        texts.scanned + ssid + "is found...\nScan_Results Command Sent Successfully...\n";
    texts.added = texts.listed + "Call to ADD_NETWORK is Successful...\n";
    texts.configured = texts.added + "Result of cmd_to_setnetwork function is 0\n";
    texts.selected = texts.configured + "Call to SELECT_NETWORK is Successful...\n";
    texts.addressed = texts.selected + "Executing dhclient...\nudhcpc -i wlan0 --now.\n"
                                       "Command to udhcpc is successful...\n";
    texts.unmeasured = texts.addressed + "IPERF not set in conf. file!!\n";
    return texts;
}

} // namespace test_texts

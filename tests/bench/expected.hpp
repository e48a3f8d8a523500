// SPDX-License-Identifier: Apache-2.0
// Console texts that many runs have in common.
#pragma once

#include <string>

namespace bench_test {

inline const std::string banner = "\n[WIFI]WIVEX2_0_160421_INCREASE_SCAN_RESULT_SIZE\n"
                                  "\n[WIFI]This build is compiled on May 13 2016, 02:36:07.\n";

inline const std::string one_iteration =
    "[WIFI]'m' parameter passed without value or 0: Taking number of iterations for running test "
    "case as 1\n";

/// From the banner to the first iteration of a run with the default file.
inline const std::string start = banner + "[WIFI]Reading Conf file: /lib/modules/wifi/wivex.cfg\n"
                                          "[WIFI]USBFS is already Mounted\n"
                                          "[WIFI]USBFS is Mounted\n";

/// The checks of one iteration on the usual device.
inline const std::string checks = "\n[WIFI]Chip type is = 3\n"
                                  "[WIFI]Chip vendor id = 0a5c and product id bd27\n"
                                  "[WIFI]MODULE CONNECTED\n"
                                  "[WIFI]WIFI DRIVER READY\n";

/// Both connections of a session closed.
inline const std::string closed =
    "[WIFI]Here at 217 wpa_ctrl_close...\nValue of sigterm_var is 0 ...\n"
    "[WIFI]Here at 217 wpa_ctrl_close...\nValue of sigterm_var is 0 ...\n";

/// The clean-up when nothing is open.
inline const std::string cleanup = "[WIFI]Cleanup\n"
                                   "[WIFI]Set value of sigterm_var\n"
                                   "[WIFI]Closing the ctrl sockets\n"
                                   "[WIFI]Closing the Event sockets\n"
                                   "[WIFI]Reset Value of sigterm_var\n";

/// The clean-up when both connections are open.
inline const std::string cleanup_of_a_session =
    "[WIFI]Cleanup\n"
    "[WIFI]Set value of sigterm_var\n"
    "[WIFI]Closing the ctrl sockets\n"
    "[WIFI]Here at 217 wpa_ctrl_close...\nValue of sigterm_var is 1 ...\n"
    "[WIFI]Closing the Event sockets\n"
    "[WIFI]Here at 217 wpa_ctrl_close...\nValue of sigterm_var is 1 ...\n"
    "[WIFI]Reset Value of sigterm_var\n";

/// From the last iteration to the exit of a run that came to its end.
inline const std::string regular_end = "[WIFI]ResultFile: /root/WIFIResult Updated\n" + cleanup;

/// What ^C prints before the clean-up.
inline const std::string interrupted =
    "[WIFI] Got ^C. Writing results to file before quitting.Please hold on...\n"
    "[WIFI]ResultFile: /root/WIFIResult Updated\n"
    "[WIFI] Before resultFile.flush call \n";

inline const std::string done = "[WIFI] Done..\n";

/// The result file of a run in which only this test case, behind the two checks, failed so often.
inline std::string result_of(int test_case, int failures) {
    return "Test case 1 passed \nTest case 2 passed \nTest case " + std::to_string(test_case) +
           (failures == 0 ? " passed \n" : " fail # " + std::to_string(failures) + "\n");
}

} // namespace bench_test

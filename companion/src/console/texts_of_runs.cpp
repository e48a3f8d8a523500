// SPDX-License-Identifier: Apache-2.0
// Texts of every run: its start, the checks, its end.
#include "console/tells.hpp"
#include "console/text_tables.hpp"

#include <array>

namespace wivex::report {

namespace {

using namespace columns;
using namespace tells;

// Columns: shape, text, what it tells, phase, cause, mode, trait.
constexpr auto texts = std::to_array<TextRow>({
    // Start
    {begins, "[WIFI]WIVEX", run_begins},
    {begins, "[WIFI]This build is compiled on ", starting},
    {begins, "[WIFI]Wivex Version ", not_started},
    {begins, "Usage: wivex ", not_started},
    {begins, "[WIFI]'m' parameter passed without value or 0", single_iteration},
    {begins, "[WIFI]Reading Conf file: ", config_file},
    {begins, "[WIFI]Configuration file problem", not_started},
    {begins, "[WIFI]Unknown key value pair.."},
    {begins, "skipping key = ", unknown_key, no_phase, no_cause, any_mode,
     Trait::on_standard_error},
    {ends, " characters, the rest is skipped"},
    {begins, "[WIFI]Pushing PIDs"},
    {begins, "[WIFI]pid array size "},
    {whole, "[WIFI]USBFS is already Mounted"},
    {whole, "[WIFI]USBFS is Mounted"},

    // Module and driver
    {begins, "[WIFI]Chip type is = ", chip_type, Phase::module},
    {begins, "[WIFI]Chip vendor id = ", chip_ids, Phase::module},
    {begins, "ERROR:Unable to open file "},
    {whole, "[WIFI]MODULE CONNECTED", pass, Phase::module},
    {begins, "[WIFI]ERROR:Module not inserted.", fail, Phase::module, Cause::module_absent},
    {begins, "[WIFI]check usbfs: ", module_hint, Phase::module, Cause::module_absent},
    {whole, "[WIFI]WIFI DRIVER READY", pass, Phase::driver},
    {begins, "[WIFI]ERROR:WiFi driver is not insmoded properly", fail, Phase::driver,
     Cause::driver_absent},
    {begins, "[WIFI]ERROR:WiFi network interface not up", fail, Phase::driver,
     Cause::interface_down},

    // MAC address
    {begins, "[WIFI]Result file direcotry is ", enter, Phase::mac},
    {begins, "[WIFI]MAC address output file ", enter, Phase::mac},
    {begins, "[WIFI]MAC from kernel ioctl :- ", kernel_mac, Phase::mac},
    {begins, "[WIFI]MAC address from wl ioctl :-  ", chip_mac, Phase::mac},
    {begins, "[WIFI]fw_mac_addr is ", chip_mac, Phase::mac},
    {begins, "[WIFI] prev_mac [", mac_pair, Phase::mac},
    {begins, "[WIFI]mac_addr is ", enter, Phase::mac},
    {begins, "[WIFI][401]IOCTL fail", enter, Phase::mac},
    {begins, "[WIFI]##### ioctl Failed to send driver", enter, Phase::mac},
    {begins, "[WIFI]Both addresses are not same", enter, Phase::mac},
    {begins, "File not able to write"},
    {whole, "[WIFI]MAC PRINT SUCCESS", pass, Phase::mac},
    {whole, "[WIFI]MAC PRINT FAIL", fail, Phase::mac, Cause::mac_differs},
    {begins, "[WIFI]err ReadTargetRange failed", fail, Phase::mac, Cause::diag_read},
    {begins, "[WIFI]err firmware_mac_address_qca_combo failed", enter, Phase::mac},
    {begins, "[WIFI]DIAG Read Word ", enter, Phase::mac},
    {begins, "[WIFI]Value in target at ", enter, Phase::mac},
    {begins, "[WIFI]echo /proc/cld/athdiagpfs failed", enter, Phase::mac},
    {begins, "[WIFI]buf is "},
    {begins, "[WIFI]buf2 is "},
    {begins, "[WIFI]Call to system("},
    {begins, "[WIFI]Can not write to reg_addr file"},
    {begins, "[WIFI]Can not read reg_dump file"},
    {begins, "[WIFI]Can not read temporary file properly"},
    {begins, "[WIFI]Can not remove temp_file"},
    {begins, "[WIFI]Content of file can't be stored in buffer"},
    {begins, "[WIFI]File temp_file"},
    {begins, "[WIFI]phy_addr is "},
    {begins, "[WIFI]Cannot open file "},
    {begins, "[WIFI]readdir_r returns NULL"},
    {begins, "readdir_r: "},

    // Loopback
    {begins, "[WIFI]VID "},
    {begins, "[WIFI]Actual PID "},
    {whole, "[WIFI]PIDs:"},
    {begins, "[WIFI]Failed to create the socket"},
    {begins, "[WIFI]##### Failed to set loopback mode", enter, Phase::loopback},
    {begins, "[WIFI]Loopback Mode set to driver", enter, Phase::loopback},
    {begins, "[WIFI]IOCTL fail for loopback", enter, Phase::loopback},
    {begins, "[WIFI]Loopback fail, status ", enter, Phase::loopback},
    {begins, "[WIFI]===> Loopback Test Passed Successfully ", loopback_status, Phase::loopback},
    {begins, "[WIFI]Current module : vid = ", enter, Phase::loopback},
    {begins, "[WIFI]LOOPBACK is not supported for this chip", enter, Phase::loopback},
    {begins, "[WIFI] Loopback about to start", enter, Phase::loopback},
    {begins, "[WIFI]Cannot create socket and gets file descriptor"},
    {begins, "[WIFI]No private ioctl is for ", enter, Phase::loopback},
    {begins, "get_priv_ioctls: memory reallocation failed"},
    {begins, "[WIFI]Command number for ", enter, Phase::loopback},
    {begins, "[WIFI]Could not find loopback ioctl command number", enter, Phase::loopback},
    {begins, "[WIFI]Correct loopback ioctl command number detected", enter, Phase::loopback},
    {begins, "[WIFI]Error in sending loopback ioctl to driver", enter, Phase::loopback},
    {begins, "[WIFI]ioctl[SIOCDEVPRIVATE]: ", enter, Phase::loopback},
    {begins, "[WIFI]Sending loopback request using ioctl", enter, Phase::loopback},
    {begins, "[WIFI]Sending command for loopback is successful but", enter, Phase::loopback},
    {begins, "[WIFI]Please check driver status"},
    {begins, "[WIFI]Buffer is ", enter, Phase::loopback},
    {begins, "[WIFI]total_packets [", enter, Phase::loopback},
    {begins, "[WIFI]Loopback Successful", enter, Phase::loopback},
    {begins, "[WIFI]Not Able to find ioctl command", enter, Phase::loopback},
    {begins, "[WIFI]Not Able to send ioctl command", enter, Phase::loopback},
    {begins, "[WIFI][Trying to Mount Debugfs for Wi-Fi]", enter, Phase::loopback},
    {begins, "[WIFI]Debugfs Mount Error : ", enter, Phase::loopback},
    {begins, "[WIFI]Debugfs is Mounted", enter, Phase::loopback},
    {begins, "[WIFI]path = "},
    {begins, "[WIFI]echo "},
    {begins, "[WIFI]cat "},
    {begins, "[WIFI]buf="},
    {begins, "[WIFI]val1="},
    {begins, "[WIFI]File Error : ", enter, Phase::loopback},
    {begins, "[WIFI]Unable to start shell: ", enter, Phase::loopback},
    {begins, "[WIFI][QCA Wi-Fi Content Error Count]", enter, Phase::loopback},
    {begins, "[WIFI][QCA Wi-Fi Seq Error Count]", enter, Phase::loopback},
    {whole, "[WIFI]LOOPBACK SUCCESS", pass, Phase::loopback},
    {begins, "[WIFI]### LOOPBACK FAIL ###", fail, Phase::loopback, Cause::loopback_failed},

    // Ends
    {begins, "[WIFI]softAP created successfuly.", softap_end, no_phase, no_cause, softap},
    {begins, "[WIFI]ERROR:create softAP problem", softap_end, no_phase, no_cause, softap},
    {begins, "[WIFI] Got ^C.", interrupted},
    {begins, "[WIFI] Got Kill signal...", killed},
    {begins, "[WIFI]Calling for chip --> ", killed},
    {begins, "[WIFI]Open error"},
    {begins, "[WIFI]Write error"},
    {begins, "[WIFI]Write to file "},
    {begins, "[WIFI]WiFi Vendor is QCA 11n. Nothing to do."},
    {begins, "[WIFI]user file name is ", result_path},
    {open, "[WIFI]Unable to open Result File: ", result_unwritable, no_phase, no_cause, any_mode,
     Trait::on_standard_error},
    {begins, "[WIFI]ResultFile: ", result_written},
    {begins, "[WIFI]Unable to write Result File: ", results_lost},
    {begins, "[WIFI]Unable to write results", results_lost},
    {begins, "[WIFI]ERROR:run ended early: ", results_lost},
    {begins, "[WIFI]Out of memory", results_lost},
    {begins, "[WIFI] Before resultFile.flush call", after_interrupt},
    {begins, "[WIFI]resultFile.flush() called", after_interrupt},
    {whole, "[WIFI]Cleanup", run_over},
    {begins, "[WIFI]Set value of sigterm_var"},
    {begins, "[WIFI]Closing the ctrl sockets"},
    {begins, "[WIFI]Closing the Event sockets"},
    {begins, "[WIFI]Reset Value of sigterm_var", cleaned_up},
    {begins, "[WIFI] Done..", done},
});

} // namespace

std::span<const TextRow> texts_of_runs() {
    return texts;
}

} // namespace wivex::report

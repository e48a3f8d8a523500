// SPDX-License-Identifier: Apache-2.0
#include "run/start.hpp"

#include "common/buffers.hpp"
#include "common/console.hpp"
#include "common/files.hpp"
#include "common/process_state.hpp"
#include "common/shell.hpp"
#include "run/config_file.hpp"
#include "run/mode_table.hpp"
#include "run/readiness.hpp"
#include "run/results.hpp"

#include <cstdio>

namespace wivex {

namespace {

constexpr const char* default_config = "/lib/modules/wifi/wivex.cfg";
constexpr const char* qca_config = "/lib/modules/wifi/wivex_qca.cfg";
constexpr const char* softap_config = "/lib/modules/wifi/wivex_softap.cfg";
constexpr const char* usb_device_list = "/proc/bus/usb/devices";
constexpr int up_bit = 1;

} // namespace

const char* chosen_config_path() {
    if (run_options.softap_mode != 0) {
        return softap_config;
    }
    switch (run_options.config_choice) {
    case 0:
    case 1:
        return default_config;
    case 2:
        return qca_config;
    case 3:
        return softap_config;
    case -1:
        return run_options.user_config_file.c_str();
    default:
        // Any other answer to the prompt runs without a file: kept.
        return nullptr;
    }
}

void print_banner() {
    print_out("\n[WIFI]WIVEX2_0_160421_INCREASE_SCAN_RESULT_SIZE\n");
    print_out("\n[WIFI]This build is compiled on May 13 2016, 02:36:07.\n");
}

bool read_chosen_config(RunConfig& config) {
    const char* const path = chosen_config_path();
    if (path == nullptr || read_config_file(path, config) == 1) {
        return true;
    }
    // Names the default result file even when -R gave another.
    print_err("[WIFI]Configuration file problem.Plese check %s for more details\n",
              default_result_file);
    return false;
}

void enable_chosen_test_cases() {
    enable_test_case(run_options.results, test_case::module);
    enable_test_case(run_options.results, test_case::driver);
    for (const ModeRow& mode : mode_table()) {
        if (run_options.*(mode.chosen) != 0 && mode.test_case >= 0) {
            enable_test_case(run_options.results, mode.test_case);
        }
    }
}

void provide_usb_device_list() {
    if (can_be_read(usb_device_list)) {
        print_out("[WIFI]USBFS is already Mounted\n");
    } else {
        run_shell("mount -t usbfs none /proc/bus/usb/;");
    }
    print_out("[WIFI]USBFS is Mounted\n");
}

void bring_interface_up(const RunConfig& config) {
    std::int32_t status = interface_status::ready;
    read_interface_flag(interface_flags_path(config), up_bit, status);
    if (status != interface_status::flag_clear) {
        return;
    }
    CommandBuffer command{};
    std::snprintf(command.data(), command.size(), "ifconfig %s up", config.interface_name.c_str());
    run_shell(command.data());
}

} // namespace wivex

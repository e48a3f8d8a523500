// SPDX-License-Identifier: Apache-2.0
#include "run/run_loop.hpp"

#include "common/console.hpp"
#include "common/process_state.hpp"
#include "common/scan_answer.hpp"
#include "common/waiting.hpp"
#include "diag/loopback.hpp"
#include "diag/mac_address.hpp"
#include "modes/scan.hpp"
#include "run/mode_table.hpp"
#include "run/readiness.hpp"
#include "run/results.hpp"

#include <string>

namespace wivex {

namespace {

constexpr int pause_between_iterations = 2;

void check_module_of_iteration(RunConfig& config, std::uint32_t iteration) {
    if (check_module(config) != 0) {
        print_out("[WIFI]MODULE CONNECTED\n");
        return;
    }
    print_out("[WIFI]ERROR:Module not inserted. check Insmod [*].ko\n");
    print_out("[WIFI]check usbfs: mount -t usbfs none /proc/bus/usb \n");
    record_failure(run_options.results, error_code::module_absent, iteration);
}

std::int32_t check_driver_of_iteration(const RunConfig& config, std::uint32_t iteration) {
    const std::int32_t status = check_driver(config);
    if (status == interface_status::ready) {
        print_out("[WIFI]WIFI DRIVER READY\n");
    } else if (status == interface_status::unreadable) {
        print_out("[WIFI]ERROR:WiFi driver is not insmoded properly, "
                  "Please check WiFi driver status...\n");
        record_failure(run_options.results, error_code::driver_not_loaded, iteration);
    } else {
        print_out("[WIFI]ERROR:WiFi network interface not up(check supplicant)\n");
        record_failure(run_options.results, error_code::interface_down, iteration);
    }
    return status;
}

// The part of the result file's path up to its last "/"; empty when it has none. Of a longer path
// only the first 99 characters count.
std::string result_directory() {
    constexpr std::size_t path_size = 100;
    const std::string& chosen = run_options.result_file;
    const std::string path = chosen.empty() ? default_result_file : chosen;
    const std::string kept = path.substr(0, path_size - 1);
    return kept.substr(0, kept.rfind('/') + 1);
}

void check_mac_address_of_iteration(const RunConfig& config, std::uint32_t iteration) {
    std::string directory = result_directory();
    print_out("[WIFI]Result file direcotry is %s\n", directory.c_str());
    if (mac_address_check(config, directory) != 0) {
        print_out("[WIFI]MAC PRINT SUCCESS\n");
        return;
    }
    print_out("[WIFI]MAC PRINT FAIL\n");
    record_failure(run_options.results, error_code::mac_address_differs, iteration);
}

void test_loopback_of_iteration(const RunConfig& config, std::uint32_t iteration) {
    if (loopback_test(config) == 1) {
        print_out("[WIFI]LOOPBACK SUCCESS\n");
        return;
    }
    print_out("[WIFI]### LOOPBACK FAIL ###\n");
    record_failure(run_options.results, error_code::loopback_failed, iteration);
}

// The verdict is inverted: kept.
void print_softap_verdict(std::int32_t driver_status) {
    if (driver_status != interface_status::ready) {
        print_out("[WIFI]softAP created successfuly.\n");
    } else {
        print_out("[WIFI]ERROR:create softAP problem\n");
    }
}

void record_code(const ModeRow& mode, ErrorCode code, std::uint32_t iteration) {
    for (const ErrorCode recorded : mode.script->recorded) {
        if (recorded == code) {
            record_test_case(run_options.results, mode.test_case, code, iteration);
        }
    }
    for (const Translation& translation : mode.script->translated) {
        if (translation.returned == code) {
            record_test_case(run_options.results, mode.test_case, translation.recorded, iteration);
        }
    }
}

void run_scripted_mode(const ModeRow& mode, RunConfig& config, std::uint32_t iteration) {
    const ErrorCode code = mode.script->run(config);
    if (code == error_code::passed) {
        // A pass is filed under iteration 1, whatever the counter says.
        record_test_case(run_options.results, mode.test_case, error_code::passed, 1);
    } else {
        record_code(mode, code, iteration);
        wait_for(mode.script->pause_after_failure);
    }
}

void run_scan_mode(std::uint32_t iteration) {
    switch (scan_wifi_test(run_options.scan_ssid)) {
    case scan_answer::status_lost:
        print_out("[WIFI]SCAN FAIL\n");
        record_failure(run_options.results, error_code::scan_test_failed, iteration);
        return;
    case scan_answer::scan_failed:
        print_out("[WIFI]SCAN FAIL\n");
        record_failure(run_options.results, error_code::kernel_scan_failed, iteration);
        return;
    case scan_answer::nothing_heard:
        print_out("[WIFI]SCAN SUCCESS AND RUN IN SHIELD ROOM\n");
        return;
    default:
        print_out("[WIFI]SCAN SUCCESS\n");
    }
}

void run_test_mode(RunConfig& config, std::uint32_t iteration) {
    if (run_options.scan_mode != 0) {
        run_scan_mode(iteration);
        return;
    }
    for (const ModeRow& mode : mode_table()) {
        if (mode.script != nullptr && run_options.*(mode.chosen) != 0) {
            run_scripted_mode(mode, config, iteration);
            return;
        }
    }
}

RunEnd run_iteration(RunConfig& config, std::uint32_t iteration) {
    print_out("\n");
    if (module_check_enabled != 0) {
        check_module_of_iteration(config, iteration);
    }
    std::int32_t driver_status = interface_status::ready;
    if (driver_check_enabled != 0) {
        driver_status = check_driver_of_iteration(config, iteration);
    }
    if (run_options.mac_mode != 0) {
        check_mac_address_of_iteration(config, iteration);
    }
    if (run_options.loopback_mode != 0) {
        test_loopback_of_iteration(config, iteration);
    }
    if (run_options.softap_mode != 0) {
        print_softap_verdict(driver_status);
        return RunEnd::softap;
    }
    run_test_mode(config, iteration);
    return RunEnd::finished;
}

} // namespace

RunEnd run_loop(RunConfig& config) {
    for (std::int32_t iteration = 0; iteration < run_options.iteration_count; ++iteration) {
        if (run_iteration(config, static_cast<std::uint32_t>(iteration)) == RunEnd::softap) {
            return RunEnd::softap;
        }
        wait_for(pause_between_iterations);
    }
    return RunEnd::finished;
}

} // namespace wivex

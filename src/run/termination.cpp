#include "run/termination.hpp"

#include "common/console.hpp"
#include "common/files.hpp"
#include "common/interrupts.hpp"
#include "common/process_state.hpp"
#include "ctrl/wpa_ctrl.hpp"
#include "run/results.hpp"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <cerrno>
#include <exception>
#include <string_view>
#include <utility>

namespace wivex {

namespace {

constexpr const char* loopback_parameter = "/sys/module/bcmdhd/parameters/usbloop_enable";
constexpr std::string_view loopback_off = "0\n";

void write_results_of_interrupted_run() {
    ResultStream& stream = run_options.result_stream;
    if (stream.failed) {
        return;
    }
    write_result_file(run_options.results, stream);
    print_out("[WIFI] Before resultFile.flush call \n");
    if (run_options.debug != 0) {
        print_out("[WIFI]resultFile.flush() called\n");
    }
}

void leave_broadcom_loopback() {
    const UniqueFd parameter = open_file(loopback_parameter, O_WRONLY);
    if (parameter.get() <= 0) {
        print_error("[WIFI]Open error", errno);
        return;
    }
    if (call_on_file([&parameter] {
            return write(parameter.get(), loopback_off.data(), loopback_off.size());
        }) < 0) {
        print_error("[WIFI]Write error", errno);
        return;
    }
    print_out("[WIFI]Write to file \"%s\" success\n", loopback_parameter);
}

void leave_loopback() {
    switch (run_options.chip_type) {
    case 3:
    case 5:
        leave_broadcom_loopback();
        return;
    case 1:
    case 2:
        print_out("[WIFI]WiFi Vendor is QCA 11n. Nothing to do.\n");
        return;
    default:
        return;
    }
}

void end_run(int signal_number) {
    if (signal_number == SIGINT) {
        print_out("[WIFI] Got ^C. Writing results to file before quitting.Please hold on...\n");
        write_results_of_interrupted_run();
    } else if (signal_number == SIGTERM) {
        // No result file here: a kill means that nobody waits for the results.
        print_out("[WIFI] Got Kill signal...\n");
        print_out("[WIFI]Calling for chip --> %d\n", run_options.chip_type);
        leave_loopback();
    }
    cleanup();
    print_out("[WIFI] Done..\n");
    flush_out();
}

} // namespace

void cleanup() {
    print_out("[WIFI]Cleanup\n");
    print_out("[WIFI]Set value of sigterm_var\n");
    sigterm_var = 1;
    print_out("[WIFI]Closing the ctrl sockets\n");
    wpa_ctrl_close(std::exchange(command_connection, nullptr));
    print_out("[WIFI]Closing the Event sockets\n");
    wpa_ctrl_close(std::exchange(event_connection, nullptr));
    print_out("[WIFI]Reset Value of sigterm_var\n");
    sigterm_var = 0;
    flush_out();
}

void termination_handler(int signal_number) {
    seal_interrupts(signal_number);
    try {
        end_run(signal_number);
    } catch (const std::exception&) {
        print_err("[WIFI]Out of memory\n");
    }
    _exit(0);
}

} // namespace wivex

// SPDX-License-Identifier: Apache-2.0
#include "run/termination.hpp"

#include "common/console.hpp"
#include "common/interrupts.hpp"
#include "common/process_state.hpp"
#include "ctrl/wpa_ctrl.hpp"
#include "diag/chip_family.hpp"
#include "run/results.hpp"

#include <signal.h>
#include <unistd.h>

#include <exception>
#include <utility>

namespace wivex {

namespace {

void write_results_of_interrupted_run() {
    ResultStream& stream = run_options.result_stream;
    if (stream.failed) {
        return;
    }
    write_result_file(run_options.results, run_options.result_file, stream);
    print_out("[WIFI] Before resultFile.flush call \n");
    if (run_options.debug != 0) {
        print_out("[WIFI]resultFile.flush() called\n");
    }
}

void end_run(int signal_number) {
    if (signal_number == SIGINT) {
        print_out("[WIFI] Got ^C. Writing results to file before quitting.Please hold on...\n");
        write_results_of_interrupted_run();
    } else if (signal_number == SIGTERM) {
        // No result file here: kept.
        print_out("[WIFI] Got Kill signal...\n");
        print_out("[WIFI]Calling for chip --> %d\n", run_options.chip_type);
        if (const auto leave = chip_family().leave_loopback; leave != nullptr) {
            leave();
        }
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

// SPDX-License-Identifier: Apache-2.0
// wivex: proves the Wi-Fi module, driver and supplicant of the device it runs on.

#include "common/console.hpp"
#include "common/interrupts.hpp"
#include "common/process_state.hpp"
#include "run/command_line.hpp"
#include "run/results.hpp"
#include "run/run_loop.hpp"
#include "run/start.hpp"
#include "run/termination.hpp"

#include <unistd.h>

#include <cstdlib>
#include <ctime>
#include <exception>

namespace wivex {

namespace {

void finish() {
    write_result_file(run_options.results, run_options.result_file, run_options.result_stream);
    cleanup();
}

void run(int argc, char* argv[]) {
    RunConfig config;
    print_banner();
    if (parse_command_line(argc, argv) != 1 || !read_chosen_config(config)) {
        return;
    }
    enable_chosen_test_cases();
    install_interrupt_handler(termination_handler);
    shield_from_hanging_files();
    std::srand(static_cast<unsigned>(std::time(nullptr)));
    provide_usb_device_list();
    bring_interface_up(config);
    if (run_loop(config) == RunEnd::finished) {
        finish();
    }
}

// The handler is installed when the last of the records stands.
bool records_exist() {
    return interrupts_held();
}

// Memory ran out. What was recorded is still written. Before there are records, the file of an
// earlier run stays as it is.
void finish_after_failure(const std::exception& failure) {
    print_err("[WIFI]ERROR:run ended early: %s\n", failure.what());
    if (!records_exist()) {
        return;
    }
    try {
        finish();
    } catch (const std::exception&) {
        print_err("[WIFI]Unable to write results\n");
    }
}

[[noreturn]] void end_at_once() {
    print_err("[WIFI]Unable to write results\n");
    flush_out();
    _exit(0);
}

// No memory is left, not even for an exception.
[[noreturn]] void end_without_memory() {
    std::set_terminate(end_at_once);
    print_err("[WIFI]ERROR:run ended early: out of memory\n");
    if (records_exist() && !interrupts_sealed()) {
        finish();
    }
    flush_out();
    _exit(0);
}

// Runs before anything is constructed: the first allocation can fail already.
[[gnu::constructor(101)]] void tell_when_memory_runs_out() {
    std::set_terminate(end_without_memory);
}

} // namespace

} // namespace wivex

int main(int argc, char* argv[]) {
    std::atexit(wivex::flush_out);
    try {
        wivex::run(argc, argv);
    } catch (const std::exception& failure) {
        wivex::finish_after_failure(failure);
    }
    return 0;
}

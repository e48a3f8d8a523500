// SPDX-License-Identifier: Apache-2.0
#include "diag/loopback_ath6kl.hpp"

#include "common/buffers.hpp"
#include "common/console.hpp"
#include "common/files.hpp"
#include "common/process_state.hpp"
#include "common/shell.hpp"
#include "common/waiting.hpp"
#include "diag/register_files.hpp"

#include <fcntl.h>

#include <bit>
#include <cerrno>
#include <cstdio>
#include <string>

namespace wivex {

namespace {

constexpr std::int64_t settling_time_us = 1'000'000;

constexpr const char* content_error_register = "0x40bf38";
constexpr const char* sequence_error_register = "0x40bf34";

/// The two numbers of a counter dump. What cannot be parsed keeps the value of the dump before.
struct CounterValues {
    unsigned first = 0;
    unsigned second = 0;
};

bool directory_opens(const char* path) {
    return static_cast<bool>(open_file(path, O_RDONLY | O_DIRECTORY));
}

bool provide_debugfs() {
    if (!directory_opens(phy_root)) {
        print_err("[WIFI][Trying to Mount Debugfs for Wi-Fi]\n");
        run_shell("mount -t debugfs none /sys/kernel/debug;");
        if (!directory_opens(phy_root)) {
            print_err("[WIFI]Debugfs Mount Error : Does not exist = %s\n", phy_root);
            return false;
        }
    }
    print_err("[WIFI]Debugfs is Mounted\n");
    return true;
}

std::string echo_command(const char* value, const std::string& path, const char* file) {
    return fit_command(std::string("echo ") + value + " > " + path + "/ath6kl/" + file);
}

std::string dump_command(const std::string& path) {
    return fit_command("cat " + path + "/ath6kl/reg_dump");
}

// A command's exit status does not count; a shell that could not be started is an error.
void print_and_run(const std::string& command, int& errors, const char* prefix = "") {
    print_err("%s%s\n", prefix, command.c_str());
    if (run_shell(command) == -1) {
        print_error("[WIFI]Unable to start shell", errno);
        ++errors;
    }
}

// Reads the phy path itself, which is a directory: the read fails, and the last command is parsed
// in place of a dump. Kept. Returns false when it cannot be opened.
bool read_counter(const std::string& path, std::string last_command, CounterValues& values,
                  int& errors) {
    FileReader file(open_file(path.c_str(), O_RDONLY));
    if (!file) {
        print_err("[WIFI]File Error : %s\n", path.c_str());
        ++errors;
        return false;
    }
    CommandBuffer line{};
    if (file.read_line(line)) {
        last_command = line.data();
    }
    std::sscanf(last_command.c_str(), "%x%x", &values.first, &values.second);
    print_err("[WIFI]buf=%s\n", last_command.c_str());
    print_err("[WIFI]val1=%d val2=%d\n", std::bit_cast<int>(values.first),
              std::bit_cast<int>(values.second));
    if (std::bit_cast<int>(values.second) > 0) {
        ++errors;
    }
    return true;
}

void run_loopback(const std::string& path, int& errors) {
    print_and_run(echo_command("2", path, "aow"), errors, "[WIFI]");
    wait_for(0, settling_time_us);
    print_and_run(echo_command("3", path, "aow"), errors);
}

void read_counters(const std::string& path, int& errors) {
    CounterValues values;
    print_err("[WIFI][QCA Wi-Fi Content Error Count]\n");
    print_and_run(echo_command(content_error_register, path, "reg_addr"), errors);
    const std::string dump = dump_command(path);
    print_and_run(dump, errors);
    if (!read_counter(path, dump, values, errors)) {
        return;
    }
    print_err("[WIFI][QCA Wi-Fi Seq Error Count]\n");
    const std::string select = echo_command(sequence_error_register, path, "reg_addr");
    print_and_run(select, errors);
    // The second dump is shown only after this read, which parses the command before it.
    if (!read_counter(path, select, values, errors)) {
        return;
    }
    print_and_run(dump, errors, "[WIFI]");
    wait_for(run_options.iteration_interval);
}

} // namespace

int loopback_ath6kl(const RunConfig& /*config*/) {
    if (!provide_debugfs()) {
        return 0;
    }
    PhyName phy{};
    if (!find_phy_name(phy)) {
        print_err("[WIFI]phy_addr is NULL\n");
        return 0;
    }
    const std::string name = phy.data();
    print_err("[WIFI]phy_addr is [%s] [%zu]\n", name.c_str(), name.size());
    const std::string path = fit_command(std::string(phy_root) + "/" + name);
    print_err("[WIFI]buf is [%s]\n", path.c_str());
    print_err("[WIFI]path = %s\n", path.c_str());
    int errors = 0;
    run_loopback(path, errors);
    read_counters(path, errors);
    return errors < 1 ? 1 : 0;
}

} // namespace wivex

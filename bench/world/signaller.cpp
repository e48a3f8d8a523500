// SPDX-License-Identifier: Apache-2.0
#include "world/signaller.hpp"

#include "language/conventions.hpp"
#include "language/files.hpp"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <string>

namespace bench {

namespace {

constexpr unsigned look_again_us = 500;

bool runs(const std::string& name) {
    std::error_code gone;
    const std::filesystem::directory_iterator processes("/proc", gone);
    return std::any_of(begin(processes), end(processes), [&](const auto& process) {
        return read_file(process.path() / "comm").value_or("") == name + "\n";
    });
}

void note(double sent_ms) {
    const std::string path = std::string(log_folder) + "/signals";
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0644);
    dprintf(file, "%.3f\n", sent_ms);
    close(file);
}

[[noreturn]] void send_when_due(const PlannedSignal& signal, pid_t tool, const Stopwatch& watch) {
    while (!signal.child.empty() && !runs(signal.child)) {
        usleep(look_again_us);
    }
    usleep(static_cast<useconds_t>(signal.delay_ms) * 1000);
    note(watch.elapsed_ms());
    kill(tool, signal.number);
    _exit(0);
}

} // namespace

void start_signallers(const SignalPlan& signals, pid_t tool, const Stopwatch& watch) {
    for (const PlannedSignal& signal : signals) {
        if (signal.command.empty() && fork() == 0) {
            send_when_due(signal, tool, watch);
        }
    }
}

} // namespace bench

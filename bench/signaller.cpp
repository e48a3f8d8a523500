#include "signaller.hpp"

#include "text.hpp"

#include <signal.h>
#include <unistd.h>

#include <algorithm>
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

[[noreturn]] void send_when_due(const PlannedSignal& signal, pid_t tool) {
    while (!signal.child.empty() && !runs(signal.child)) {
        usleep(look_again_us);
    }
    usleep(static_cast<useconds_t>(signal.delay_ms) * 1000);
    kill(tool, signal.number);
    _exit(0);
}

} // namespace

void start_signallers(const SignalPlan& signals, pid_t tool) {
    for (const PlannedSignal& signal : signals) {
        if (signal.command.empty() && fork() == 0) {
            send_when_due(signal, tool);
        }
    }
}

} // namespace bench

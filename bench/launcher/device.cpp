// SPDX-License-Identifier: Apache-2.0
#include "launcher/device.hpp"

#include "kernel/chip.hpp"
#include "language/conventions.hpp"
#include "supplicant/supplicant.hpp"
#include "world/collect.hpp"
#include "world/device_root.hpp"
#include "world/forwarding.hpp"
#include "world/interfaces.hpp"
#include "world/program.hpp"
#include "world/signaller.hpp"
#include "world/tool_start.hpp"

#include <fcntl.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace bench {

namespace {

Gate* supplicant_ready = nullptr;

void start_supplicant(const Device& device) {
    if (device.scenario.supplicant.absent) {
        return;
    }
    static Gate ready;
    supplicant_ready = &ready;
    if (fork() != 0) {
        ready.wait();
        return;
    }
    const auto value = [&device](const char* key) {
        const auto found = device.configuration.find(key);
        return found == device.configuration.end() ? std::string() : found->second;
    };
    SupplicantSettings settings;
    settings.folder = value("ctrl_iface");
    settings.around = {value("interface_name"), value("go_ssid"), value("p2p_target_device_mac")};
    settings.script = device.scenario.supplicant;
    settings.speed = device.options.start.speed;
    settings.signals = device.options.signals;
    if (device.out_fd >= 0) {
        settings.log_fd = openat(device.out_fd, "supplicant.log",
                                 O_WRONLY | O_CREAT | O_TRUNC | O_APPEND | O_CLOEXEC, 0644);
    }
    run_supplicant(settings, [] { supplicant_ready->open(); });
}

void use_default_signals() {
    for (const int number : {SIGINT, SIGTERM, SIGQUIT, SIGPIPE}) {
        signal(number, SIG_DFL);
    }
}

void limit_descriptors(int count) {
    if (count > 0) {
        const rlimit limit{static_cast<rlim_t>(count), static_cast<rlim_t>(count)};
        setrlimit(RLIMIT_NOFILE, &limit);
    }
}

std::vector<std::string> command_line(const Options& options) {
    if (options.shell) {
        return {"/bin/sh", "-i"};
    }
    std::vector<std::string> words = emulator_words(options.start);
    words.emplace_back(tool_in_world);
    words.insert(words.end(), options.tool_arguments.begin(), options.tool_arguments.end());
    return words;
}

[[noreturn]] void become_tool(const Device& device) {
    use_default_signals();
    setenv("PATH", search_path(device.scenario).c_str(), 1);
    setenv("HOME", "/root", 1);
    setenv("PS1", "device# ", 1);
    set_preload_environment(device.options.start);
    // What whoever started the bench left open must not count against the limit.
    close_range(STDERR_FILENO + 1, ~0U, 0);
    limit_descriptors(device.options.descriptor_limit);
    if (chdir("/root") != 0) {
        std::perror("wivex-bench: /root");
    }
    const std::vector<std::string> words = command_line(device.options);
    become_program(words);
    std::perror(words.front().c_str());
    _exit(bench_failure);
}

// As the first process of its namespace this one inherits every orphan.
Ended wait_for_tool(pid_t tool) {
    Ended ended;
    pid_t pid = -1;
    do {
        pid = wait4(-1, &ended.status, 0, &ended.usage);
    } while (pid != tool);
    return ended;
}

int exit_status(int status) {
    constexpr int killed = 128;
    return WIFEXITED(status) ? WEXITSTATUS(status) : killed + WTERMSIG(status);
}

void set_interface_up(InterfaceState state) {
    bring_up("lo");
    if (state == InterfaceState::up) {
        bring_up("wlan0");
    }
}

} // namespace

int run_device(const Device& device, Gate& network, Gate& access_point) {
    std::string problem;
    const DeviceRoot root{to_text(device.configuration), device.options.tool,
                          device.options.start.preloads, path_of_emulator(device.options.start)};
    if (!enter_device_root(root, device.scenario, problem) ||
        !start_chip(device.scenario.chip, std::string(log_folder) + "/chip.log", problem)) {
        std::fprintf(stderr, "wivex-bench: %s\n", problem.c_str());
        return bench_failure;
    }
    if (!network.wait()) {
        return bench_failure;
    }
    set_interface_up(device.scenario.interface);
    start_supplicant(device);
    if (!access_point.wait()) {
        return bench_failure;
    }
    forward_sigterm_to(-1);
    const Stopwatch watch;
    const pid_t tool = fork();
    if (tool == 0) {
        become_tool(device);
    }
    forward_sigterm_to(tool);
    start_signallers(device.options.signals, tool, watch);
    const Ended ended = wait_for_tool(tool);
    if (device.out_fd >= 0) {
        collect(device.out_fd, ended, watch);
    }
    return exit_status(ended.status);
}

} // namespace bench

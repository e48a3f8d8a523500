// SPDX-License-Identifier: Apache-2.0
// bare-associate ITERATIONS SSID PASSPHRASE: what an iteration of the legacy WLAN test asks the
// kernel for without traffic: the commands of scan, association and disconnection sent and their
// answers received, the events awaited, the DHCP client started and ended. What comes back is not
// looked at, and nothing is printed. The floor that the tool is held against. Exit status 0, or 1
// when a step fails.
#include "bare_control.hpp"
#include "bare_iteration.hpp"

#include <dirent.h>
#include <spawn.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <string>
#include <string_view>

namespace {

constexpr std::string_view supplicant = "/var/run/wpa_supplicant/wlan0";
constexpr timespec pause_before_attach{1, 0};

void walk_through_tmp() {
    DIR* const folder = opendir("/tmp");
    while (readdir(folder) != nullptr) {
    }
    closedir(folder);
}

bool run(const char* text) {
    std::array<char, 3> shell{"sh"};
    std::array<char, 3> option{"-c"};
    std::string command(text);
    const std::array<char*, 4> arguments{shell.data(), option.data(), command.data(), nullptr};
    pid_t child = -1;
    int status = -1;
    return posix_spawn(&child, "/bin/sh", nullptr, nullptr, arguments.data(), environ) == 0 &&
           waitpid(child, &status, 0) == child && status == 0;
}

bool set_network(const BareControl& commands, std::string_view ssid, std::string_view passphrase) {
    const std::array<std::string, 6> fields{{
        "ssid \"" + std::string(ssid) + "\"",
        "auth_alg OPEN",
        "proto RSN",
        "key_mgmt WPA-PSK",
        "pairwise CCMP",
        "psk \"" + std::string(passphrase) + "\"",
    }};
    return std::ranges::all_of(fields, [&commands](const std::string& field) {
        return commands.request("SET_NETWORK 0 " + field);
    });
}

bool associate(std::string_view ssid, std::string_view passphrase) {
    walk_through_tmp();
    const BareControl commands(supplicant, 1);
    const BareControl events(supplicant, 2);
    nanosleep(&pause_before_attach, nullptr);
    return events.request("ATTACH") && commands.request("SCAN") &&
           events.await_event("CTRL-EVENT-SCAN-RESULTS") && commands.request("SCAN_RESULTS") &&
           commands.request("REMOVE_NETWORK all") && commands.request("ADD_NETWORK") &&
           set_network(commands, ssid, passphrase) && commands.request("SELECT_NETWORK 0") &&
           events.await_event("CTRL-EVENT-CONNECTED") && run("udhcpc -i wlan0 --now") &&
           run("killall udhcpc") && commands.request("DISABLE_NETWORK 0") &&
           events.await_event("CTRL-EVENT-DISCONNECTED") && events.request("DETACH");
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::fputs("usage: bare-associate ITERATIONS SSID PASSPHRASE\n", stderr);
        return 2;
    }
    const int iterations = iterations_of(2, argv);
    for (int iteration = 0; iteration < iterations; ++iteration) {
        if (!read_readiness() || !associate(argv[2], argv[3])) {
            return 1;
        }
        pause_after_iteration();
    }
    return iterations == 0 ? 2 : 0;
}

// SPDX-License-Identifier: Apache-2.0
#include "fault_modes.hpp"

#include <algorithm>
#include <sstream>

namespace faults {

namespace {

/// The tool's clock against the machine's.
constexpr int speed = 20;

/// Many times what a run takes, its longest time-outs included.
constexpr std::chrono::seconds longest_run{60};

constexpr const char* traffic = "config check_iperf=yes\n"
                                "program iperf runs \"exit 0\"\n"
                                "program udhcpc runs \"exit 0\"\n"
                                "program killall runs \"exit 0\"";
constexpr const char* served_group = "config check_iperf=yes\n"
                                     "config p2p_iface_ip=192.168.49.2\n"
                                     "program ifconfig runs \"exit 0\"\n"
                                     "program iperf runs \"exit 0\"\n"
                                     "program udhcpd runs \"exit 0\"\n"
                                     "program killall runs \"exit 0\"";
constexpr const char* earlier_scan =
    "file /tmp/ap_status.txt \"02:00:00:00:01:0a/-40.00/0/LINE-AP-1\\n"
    "02:00:00:00:01:0f/-41.00/0/LINE-AP-9\\n\"";
constexpr const char* loopback_parameter =
    "file /sys/module/bcmdhd/parameters/usbloop_enable \"1\\n\"";

constexpr std::array<Mode, 16> all_modes{{
    {"w", "-w", "", traffic, "", Ending::regular},
    {"w-interrupted", "-w", "scan-never-ends", "", "INT@command:SCAN+200ms", Ending::interrupted},
    {"w-killed", "-w", "scan-never-ends", loopback_parameter, "TERM@command:SCAN+200ms",
     Ending::killed},
    {"d-client", "-d", "", traffic, "", Ending::regular},
    {"d-owner", "-d", "p2p-owner", served_group, "", Ending::regular},
    {"g", "-g", "go-three-clients", served_group, "INT@command:WPS_PBC#3+200ms",
     Ending::interrupted},
    {"c", "-c", "", traffic, "", Ending::regular},
    {"S", "-SLINE", "scan-listing", earlier_scan, "", Ending::regular},
    {"S-first", "-S -odbus", "scan-listing", "", "", Ending::regular},
    {"l-broadcom", "-l", "loopback/broadcom-pass", "", "", Ending::regular},
    {"l-ath6kl", "-l", "loopback/ath6kl-pass", "", "", Ending::regular},
    {"l-combo", "-l", "loopback/combo-pass", "", "", Ending::regular},
    {"M-broadcom", "-M", "mac/broadcom-same", "", "", Ending::regular},
    {"M-ath6kl", "-M", "mac/ath6kl-same", "", "", Ending::regular},
    {"M-combo", "-M", "mac/combo-same", "", "", Ending::regular},
    {"A", "-A", "", "", "", Ending::console_only},
}};

} // namespace

std::span<const Mode> modes() {
    return all_modes;
}

const Mode* find_mode(const std::string& name) {
    const auto* const found = std::find_if(all_modes.begin(), all_modes.end(),
                                           [&name](const Mode& mode) { return mode.name == name; });
    return found == all_modes.end() ? nullptr : &*found;
}

std::vector<std::string> arguments_of(const Mode& mode) {
    std::istringstream words(mode.arguments);
    std::vector<std::string> arguments;
    for (std::string word; words >> word;) {
        arguments.push_back(word);
    }
    arguments.insert(arguments.end(), {"-m", "1"});
    return arguments;
}

bench_test::BenchRun run_traced(const Mode& mode, const std::string& tracer_options) {
    bench_test::Bench bench(mode.scenario);
    bench.line(mode.lines).args(arguments_of(mode)).streams_together().faster(speed);
    bench.option("--under", std::string(TRACER) + " " + tracer_options + " --");
    if (*mode.signal != '\0') {
        bench.signal(mode.signal);
    }
    // A run that never comes to where it is interrupted, and has no end of its own.
    if (mode.ending == Ending::interrupted) {
        bench.signal("INT@25000ms");
    }
    return bench.at_most(longest_run).run();
}

} // namespace faults

// SPDX-License-Identifier: Apache-2.0
#include "storm_lives.hpp"

#include "bench_run.hpp"

#include <array>
#include <sstream>

namespace bench_test {

namespace {

constexpr const char* slow_address = "program udhcpc runs \"sleep 1\"\n"
                                     "program killall runs \"sleep 1\"";
constexpr const char* long_traffic =
    "config check_iperf=yes\nprogram iperf runs \"exec sleep 3\"\n"
    "program udhcpc runs \"sleep 1\"\nprogram killall runs \"exit 0\"";
constexpr const char* slow_server = "config p2p_iface_ip=192.168.49.2\n"
                                    "program killall runs \"sleep 1\"\n"
                                    "program udhcpd runs \"sleep 1\"";
constexpr const char* slow_registers = "program cat runs \"sleep 1; exec /bin/cat $*\"\n"
                                       "program stat runs \"sleep 1; exec /usr/bin/stat $*\"";

constexpr std::array<Life, 52> all_lives{{
    {"wlan: pass, real DHCP client", "-w", "", "", 6500, 4},
    {"wlan: pass, real iperf", "-w", "pass", "", 9000, 1},
    {"wlan: pass after pass", "-w", "", quick_address, 7000, 4},
    {"wlan: a long iperf", "-w", "", long_traffic, 7000, 4},
    {"wlan: DHCP server absent", "-w", "dhcp-server-absent", "", 6000, 3},
    {"wlan: DHCP client never found", "-w", "",
     "program udhcpc runs \"exit 0\"\nprogram killall runs \"exit 1\"", 3000, 3},
    {"wlan: failure after failure", "-w", "scan-refused", "module none", 7000, 4},
    {"wlan: interface down", "-w", "interface-down", "program ifconfig runs \"exit 0\"", 5000, 2},
    {"wlan: no supplicant", "-w", "supplicant-absent", "", 6000, 2},
    {"wlan: attaching refused", "-w", "attach-refused", "", 6000, 2},
    {"wlan: some iterations fail", "-w", "",
     "supplicant answers \"SCAN\" 2 with \"FAIL\\n\"\n"
     "supplicant answers \"DISABLE_NETWORK 0 \" 1 with \"FAIL\\n\"\n"
     "program udhcpc runs \"exit 1\"",
     8000, 2},
    {"wlan: no connection", "-w", "connection-never-comes", "", 5000, 3},
    {"wlan: disconnection never told", "-w", "disconnect-event-never-comes", quick_address, 4000,
     2},
    {"wlan: endless events on the console", "-w -u", "endless-event-flood", "", 4000, 3},
    {"wlan: forever busy", "-w", "scan-busy-forever", "", 3000, 3},
    {"wlan: no answer", "-w", "supplicant-never-answers", "", 5000, 3},
    {"wlan: supplicant dies and returns", "-w", "",
     "supplicant dies on \"SCAN\" 2\nsupplicant returns after 1s\n"
     "program udhcpc runs \"exit 0\"\nprogram killall runs \"exit 0\"",
     9000, 2},
    {"client: pass after pass", "-c", "", quick_address, 7000, 4},
    {"client: slow children", "-c", "", slow_address, 6000, 3},
    {"client: a long iperf", "-c", "", long_traffic, 7000, 3},
    {"client: DHCP server absent", "-c", "dhcp-server-absent", "", 6000, 2},
    {"client: search refused", "-c", "p2p-find-refused", "", 5000, 3},
    {"client: peer never found", "-c", "p2p-peer-never-found", "", 4000, 2},
    {"client: join never connects", "-c", "p2p-join-never-connects", "", 4000, 2},
    {"client: join refused", "-c", "p2p-connect-refused", "", 5000, 2},
    {"client: removal refused", "-c", "",
     "supplicant answers \"P2P_GROUP_REMOVE*\" 2 with \"FAIL\\n\"\n"
     "program udhcpc runs \"exit 0\"\nprogram killall runs \"exit 0\"",
     5000, 2},
    {"client: removal never told", "-c", "p2p-removal-never-told", quick_address, 5000, 3},
    {"client: no answer", "-c", "supplicant-never-answers", "", 5000, 2},
    {"device: the client, then again", "-d", "", quick_address, 15000, 3},
    {"device: the owner", "-d", "p2p-owner", slow_server, 15000, 2},
    {"device: peer asks first", "-d", "p2p-peer-asks-first", slow_address, 8000, 3},
    {"device: no address", "-d", "",
     "supplicant sends \"<3>P2P-GO-NEG-REQUEST 02:00:00:00:00:01\" on \"P2P_FIND\" after 100ms\n"
     "program udhcpc runs \"sleep 1; exit 1\"",
     8000, 2},
    {"device: search refused", "-d", "p2p-find-refused", "", 6000, 2},
    {"device: peer never found", "-d", "p2p-peer-never-found", "", 5000, 2},
    {"owner: three clients", "-g", "go-three-clients", slow_server, 9000, 4},
    {"owner: status shown", "-g -u", "go-three-clients", slow_server, 6000, 2},
    {"owner: client never associates", "-g", "go-client-never-associates", "", 6000, 2},
    {"owner: group refused", "-g", "go-group-refused", "", 5000, 2},
    {"owner: supplicant dies", "-g", "go-session-lost", "", 9000, 2},
    {"scan: pass after pass", "-SLINE", "scan-listing", "", 5000, 4},
    {"scan: a crowd", "-S -u", "scan-crowd", "", 5000, 3},
    {"scan: refused", "-S", "scan-trigger-refused", "", 5000, 3},
    {"scan: never ends", "-S", "scan-stays-forever", "", 2500, 2},
    {"scan: dump never ends", "-S", "scan-dump-cut", "", 2500, 2},
    {"loopback: in the driver", "-l", "loopback/broadcom-slow", "", 2000, 3},
    {"loopback: packets lost", "-l", "loopback/broadcom-lost", "", 5000, 3},
    {"loopback: registers", "-l -u", "loopback/ath6kl-pass", slow_registers, 8000, 4},
    {"address: registers", "-M", "mac/ath6kl-same", slow_registers, 8000, 4},
    {"address: target memory", "-M", "mac/combo-same", "", 4000, 2},
    {"mixture: diagnostics and wlan", "-l -M -w", "diagnostics-together", quick_address, 8000, 4},
    {"mixture: all modes, the scan runs", "-M -l -S -d -g -w -c", "scan-listing", "", 6000, 3},
    {"mixture: softAP behind a loopback", "-A -l -w", "loopback/broadcom-slow", "", 2000, 3},
}};

constexpr std::array<Life, 3> floods{{
    {"flood: events of a connection", "-w -u", "endless-event-flood", "", 5000, 4},
    {"flood: a crowd of access points", "-S -u", "scan-crowd", "", 8000, 1},
    {"flood: a busy supplicant's events", "-w -u", "supplicant-floods", "", 5000, 2},
}};

} // namespace

const Life& choose_life(std::span<const Life> lives, std::mt19937& random) {
    std::vector<double> weights;
    weights.reserve(lives.size());
    for (const Life& life : lives) {
        weights.push_back(life.weight);
    }
    return lives[static_cast<std::size_t>(
        std::discrete_distribution<int>(weights.begin(), weights.end())(random))];
}

std::span<const Life> lives_of_all_modes() {
    return all_lives;
}

std::span<const Life> flooding_lives() {
    return floods;
}

std::vector<std::string> arguments_of(const Life& life, int iterations) {
    std::istringstream words(life.arguments);
    std::vector<std::string> arguments;
    for (std::string word; words >> word;) {
        arguments.push_back(word);
    }
    arguments.insert(arguments.end(), {"-m", std::to_string(iterations)});
    return arguments;
}

} // namespace bench_test

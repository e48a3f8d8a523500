// SPDX-License-Identifier: Apache-2.0
#include "world/access_point.hpp"

#include "language/files.hpp"
#include "world/configuration.hpp"
#include "world/interfaces.hpp"
#include "world/namespaces.hpp"
#include "world/program.hpp"

#include <fcntl.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <initializer_list>
#include <string>

namespace bench {

namespace {

constexpr const char* dhcp_settings = "/tmp/udhcpd.conf";

// Local ports as the kernel lists them: in hexadecimal.
constexpr const char* dhcp_port = ":0043 ";
constexpr const char* iperf_port = ":1389 ";

void start(std::initializer_list<const char*> words) {
    if (fork() != 0) {
        return;
    }
    const int nowhere = open("/dev/null", O_RDWR);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        dup2(nowhere, stream);
    }
    become_program({words.begin(), words.end()});
    _exit(127);
}

void start_dhcp_server() {
    write_file(dhcp_settings, "start 192.168.49.10\nend 192.168.49.40\ninterface ap0\n"
                              "opt subnet 255.255.255.0\nopt lease 600\n"
                              "lease_file /tmp/udhcpd.leases\npidfile /tmp/udhcpd.pid\n");
    write_file("/tmp/udhcpd.leases", "");
    start({"udhcpd", "-f", dhcp_settings});
}

void wait_for_port(const char* table, const char* port) {
    constexpr int tries = 2000;
    for (int count = 0; count < tries; ++count) {
        if (read_file(table).value_or("").find(port) != std::string::npos) {
            return;
        }
        usleep(1000);
    }
}

} // namespace

int run_access_point(const AccessPointServices& services, Gate& network, const Gate& ready) {
    make_mounts_private();
    mount("none", "/tmp", "tmpfs", 0, nullptr);
    if (!network.wait()) {
        return 1;
    }
    bring_up("lo");
    set_address("ap0", access_point_address);
    if (services.dhcp) {
        start_dhcp_server();
    }
    if (services.iperf) {
        start({"iperf", "-s"});
    }
    if (services.dhcp) {
        wait_for_port("/proc/net/udp", dhcp_port);
    }
    if (services.iperf) {
        wait_for_port("/proc/net/tcp", iperf_port);
    }
    ready.open();
    while (wait(nullptr) >= 0 || errno == EINTR) {
    }
    pause();
    return 0;
}

} // namespace bench

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

// What the kernel tells of the sockets of this world while none is bound or listens.
constexpr const char* no_dhcp_server = "\nUDP: inuse 0 ";
constexpr const char* no_iperf_server = "\nTCP: inuse 0 ";

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

// The kernel's lists of ports would tell more, but it looks for each of them through the sockets of
// all worlds.
void wait_while(const char* no_server) {
    constexpr int tries = 2000;
    for (int count = 0; count < tries; ++count) {
        if (read_file("/proc/net/sockstat").value_or(no_server).find(no_server) ==
            std::string::npos) {
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
        wait_while(no_dhcp_server);
    }
    if (services.iperf) {
        wait_while(no_iperf_server);
    }
    ready.open();
    while (wait(nullptr) >= 0 || errno == EINTR) {
    }
    pause();
    return 0;
}

} // namespace bench

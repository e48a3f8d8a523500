// SPDX-License-Identifier: Apache-2.0
#include "diag/loopback_qca_combo.hpp"

#include "common/console.hpp"
#include "common/waiting.hpp"
#include "diag/private_ioctls.hpp"
#include "diag/request_socket.hpp"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

namespace wivex {

namespace {

constexpr const char* loopback_command = "getusbcontx";

// The driver's number for the loopback, under its private "get" request.
constexpr std::uint16_t loopback_sub_command = 56;
constexpr unsigned long private_get_request = SIOCIWFIRSTPRIV + 5;

// Returns what `ioctl` returns, with errno set; `answer` ends where the driver says.
int request_loopback(int fd, std::string& answer) {
    std::array<char, 4096> buffer{};
    iwreq request{};
    // Always this interface, also when the caller's texts name another.
    set_interface_name(request.ifr_name, driver_interface);
    request.u.data.pointer = buffer.data();
    request.u.data.flags = loopback_sub_command;
    const int result = wait_for_driver(fd, private_get_request, &request);
    answer.assign(buffer.data(), std::min<std::size_t>(request.u.data.length, buffer.size()));
    return result;
}

void print_ioctl_error(int error) {
    std::array<char, 100> buffer{};
    const char* const text = strerror_r(error, buffer.data(), buffer.size());
    print_out("[WIFI]ioctl[SIOCDEVPRIVATE]: %s %s\n", text, buffer.data());
}

std::string_view name_of(const iw_priv_args& entry) {
    return {entry.name, strnlen(entry.name, sizeof(entry.name))};
}

void print_verdict(int result, const char* interface) {
    if (result == 0) {
        print_out("[WIFI]Loopback Successful \n");
    } else if (result < 0) {
        print_out("[WIFI]Not Able to find ioctl command  for loopback on %s interface...\n",
                  interface);
    } else if (result == 1) {
        print_out("[WIFI]Not Able to send ioctl command  for loopback on %s interface...\n",
                  interface);
    } else {
        print_out("[WIFI]Sending command for loopback is successful but some error returned by "
                  "driver on %s interface\n[WIFI]Please check driver status...\n",
                  interface);
    }
}

} // namespace

std::size_t find_private_ioctl(std::span<const iw_priv_args> table, std::string_view command) {
    const auto matches = [command](const iw_priv_args& entry) {
        return name_of(entry).starts_with(command);
    };
    const auto found = std::find_if(table.begin(), table.end(), matches);
    return static_cast<std::size_t>(found - table.begin());
}

LoopbackCounts parse_loopback_answer(const char* answer) {
    LoopbackCounts counts;
    std::sscanf(answer, " total %d seq_err %d content_err %d", &counts.total,
                &counts.sequence_errors, &counts.content_errors);
    return counts;
}

int qca_combo_loopback(int fd, const char* command, const char* interface,
                       std::span<const iw_priv_args> table) {
    const std::size_t index = find_private_ioctl(table, command);
    // Without a match the line is printed all the same, with 0 as the number.
    const int number = index < table.size() ? static_cast<int>(table[index].cmd) : 0;
    print_out("[WIFI]Command number for %s loopback command is %d which is %zu-th private ioctl "
              "for %s interface.\n",
              command, number, index, interface);
    if (number != loopback_sub_command) {
        print_out("[WIFI]Could not find loopback ioctl command number ...\n");
        return -1;
    }
    print_out("[WIFI]Correct loopback ioctl command number detected...\n");
    std::string answer;
    if (request_loopback(fd, answer) != 0) {
        const int error = errno;
        print_out("[WIFI]Error in sending loopback ioctl to driver...\n");
        print_ioctl_error(error);
        return 1;
    }
    print_out("[WIFI]Sending loopback request using ioctl to QCA combo driver is successful...\n");
    print_out("[WIFI]Buffer is %s\n", answer.c_str());
    const LoopbackCounts counts = parse_loopback_answer(answer.c_str());
    print_out("[WIFI]total_packets [%d], seq_err [%d], content_err [%d]\n", counts.total,
              counts.sequence_errors, counts.content_errors);
    const bool passed =
        counts.total != 0 && counts.sequence_errors == 0 && counts.content_errors == 0;
    return passed ? 0 : 2;
}

int loopback_qca_combo(const RunConfig& /*config*/) {
    print_out("[WIFI] Loopback about to start \n");
    const UniqueFd socket = open_request_socket();
    if (!socket) {
        print_out("[WIFI]Cannot create socket and gets file descriptor...\n");
        return 0;
    }
    std::vector<iw_priv_args> table;
    if (get_priv_ioctls(socket.get(), driver_interface, table) <= 0) {
        print_out("[WIFI]No private ioctl is for %s interface...\n", driver_interface);
        return 0;
    }
    const int result = qca_combo_loopback(socket.get(), loopback_command, driver_interface, table);
    print_verdict(result, driver_interface);
    return result == 0 ? 1 : 0;
}

} // namespace wivex

// SPDX-License-Identifier: Apache-2.0
#include "diag/loopback_broadcom.hpp"

#include "common/console.hpp"
#include "common/files.hpp"
#include "common/process_state.hpp"
#include "diag/broadcom_request.hpp"
#include "diag/request_socket.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <string_view>

namespace wivex {

namespace {

constexpr std::int32_t enable = 1;
constexpr std::int32_t status_not_set = -1;

// First byte of the status slot, behind the name, the packet size and the packet count.
constexpr std::size_t status_offset = 21;

constexpr const char* loopback_parameter = "/sys/module/bcmdhd/parameters/usbloop_enable";
constexpr std::string_view loopback_off = "0\n";

void print_debug(const char* text) {
    if (run_options.debug != 0) {
        print_out("%s", text);
    }
}

bool set_loopback_mode(int fd) {
    Iovar mode("bus:loopback");
    mode.append(enable);
    if (request_broadcom(fd, broadcom_request::wl_set_variable, mode) < 0) {
        print_debug("[WIFI]##### Failed to set loopback mode to driver #####\n");
        return false;
    }
    print_debug("[WIFI]Loopback Mode set to driver\n");
    return true;
}

} // namespace

int loopback_broadcom(const RunConfig& config) {
    const UniqueFd socket = open_request_socket();
    if (!socket) {
        print_debug("[WIFI]Failed to create the socket\n");
        return 0;
    }
    if (!set_loopback_mode(socket.get())) {
        return 0;
    }
    Iovar transfer("usb_lb_txfer");
    transfer.append(std::atoi(config.loopback_pkt_size.c_str()));
    transfer.append(std::atoi(config.loopback_pkt_cnt.c_str()));
    transfer.append(status_not_set);
    if (request_broadcom(socket.get(), broadcom_request::driver_set_variable, transfer) < 0) {
        print_out("[WIFI]IOCTL fail for loopback\n");
        return 0;
    }
    // Only the lowest byte decides, and the slot as it was sent (ff) passes: kept.
    const unsigned status = transfer.bytes()[status_offset];
    if (status == 0) {
        print_out("[WIFI]Loopback fail, status %2x\n", status);
        return 0;
    }
    print_debug("[WIFI]===> Loopback Test Passed Successfully <===\n\n");
    print_out("[WIFI]===> Loopback Test Passed Successfully %02x<===\n", status);
    return 1;
}

void leave_broadcom_loopback() {
    const UniqueFd parameter = open_file(loopback_parameter, O_WRONLY);
    if (parameter.get() <= 0) {
        print_error("[WIFI]Open error", errno);
        return;
    }
    if (call_on_file([&parameter] {
            return write(parameter.get(), loopback_off.data(), loopback_off.size());
        }) < 0) {
        print_error("[WIFI]Write error", errno);
        return;
    }
    print_out("[WIFI]Write to file \"%s\" success\n", loopback_parameter);
}

} // namespace wivex

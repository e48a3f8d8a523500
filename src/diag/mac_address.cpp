// SPDX-License-Identifier: Apache-2.0
#include "diag/mac_address.hpp"

#include "common/console.hpp"
#include "common/files.hpp"
#include "common/process_state.hpp"
#include "common/waiting.hpp"
#include "diag/chip_family.hpp"
#include "diag/chip_mac_address.hpp"
#include "diag/mac_text.hpp"
#include "diag/request_socket.hpp"
#include "diag/to_lower_copy.hpp"

#include <linux/sockios.h>
#include <strings.h>

#include <array>
#include <cerrno>
#include <cstring>

namespace wivex {

namespace {

// Part of the message: kept.
constexpr int number_of_failure = 401;

void print_ids(const RunConfig& config) {
    print_out("[WIFI]VID %s\n", to_lower_copy(config.vendor_id).c_str());
    print_out("[WIFI]Actual PID %s\n", config.product_id.c_str());
    print_out("[WIFI]PIDs:\n");
}

bool ask_kernel(int fd, std::string& mac) {
    ifreq request{};
    set_interface_name(request.ifr_name, driver_interface);
    if (wait_for_driver(fd, SIOCGIFHWADDR, &request) != 0) {
        print_out("[WIFI][%d]IOCTL fail \n", number_of_failure);
        return false;
    }
    std::array<std::uint8_t, 6> address{};
    std::memcpy(address.data(), request.ifr_hwaddr.sa_data, address.size());
    mac = format_mac(address);
    print_out("[WIFI]MAC from kernel ioctl :- %s\n", mac.c_str());
    return true;
}

// Names the output file as soon as there is a socket.
bool read_kernel_mac(std::string& directory, std::string& mac) {
    const UniqueFd socket = open_request_socket_or_tell();
    if (!socket) {
        return false;
    }
    directory += "WIFIAddr";
    print_out("[WIFI]MAC address output file %s\n", directory.c_str());
    return ask_kernel(socket.get(), mac);
}

// A file that cannot be written does not change the verdict.
void write_address_file(const std::string& path, const std::string& mac) {
    FileWriter file(open_to_write(path.c_str()));
    int error = errno;
    if (file) {
        file.print("%s\n", mac.c_str());
        error = file.close();
    }
    if (error != 0) {
        print_error("File not able to write", error);
    }
}

} // namespace

int mac_address_check(const RunConfig& config, std::string& directory) {
    if (run_options.debug != 0) {
        print_ids(config);
    }
    std::string kernel_mac;
    if (!read_kernel_mac(directory, kernel_mac)) {
        return 0;
    }
    std::string chip_mac;
    const auto read_mac = chip_family().read_mac;
    if (read_mac != nullptr && !read_mac(config, kernel_mac, chip_mac)) {
        return 0;
    }
    write_address_file(directory, chip_mac);
    if (strncasecmp(chip_mac.c_str(), kernel_mac.c_str(), mac_text_length) != 0) {
        print_out("[WIFI]Both addresses are not same...\n");
        return 0;
    }
    return 1;
}

} // namespace wivex

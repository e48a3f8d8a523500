#include "diag/mac_address.hpp"

#include "common/console.hpp"
#include "common/files.hpp"
#include "common/process_state.hpp"
#include "common/waiting.hpp"
#include "diag/broadcom_request.hpp"
#include "diag/diag_device.hpp"
#include "diag/mac_text.hpp"
#include "diag/register_files.hpp"
#include "diag/request_socket.hpp"
#include "diag/to_lower_copy.hpp"

#include <linux/sockios.h>
#include <strings.h>

#include <algorithm>
#include <cerrno>

namespace wivex {

namespace {

// Part of the message; scripts look for it.
constexpr int number_of_failure = 401;

void print_ids(const RunConfig& config) {
    print_out("[WIFI]VID %s\n", to_lower_copy(config.vendor_id).c_str());
    print_out("[WIFI]Actual PID %s\n", config.product_id.c_str());
    print_out("[WIFI]PIDs:\n");
}

UniqueFd open_socket_or_tell() {
    UniqueFd socket = open_request_socket();
    if (!socket && run_options.debug != 0) {
        print_out("[WIFI]Failed to create the socket\n");
    }
    return socket;
}

template <typename Bytes>
std::string mac_from(const Bytes* bytes) {
    std::array<std::uint8_t, 6> address{};
    std::copy_n(bytes, address.size(), address.begin());
    return format_mac(address);
}

bool read_kernel_mac(int fd, std::string& mac) {
    ifreq request{};
    set_interface_name(request.ifr_name, driver_interface);
    if (wait_for_driver(fd, SIOCGIFHWADDR, &request) != 0) {
        print_out("[WIFI][%d]IOCTL fail \n", number_of_failure);
        return false;
    }
    mac = mac_from(request.ifr_hwaddr.sa_data);
    print_out("[WIFI]MAC from kernel ioctl :- %s\n", mac.c_str());
    return true;
}

bool read_broadcom_mac(std::string& mac) {
    const UniqueFd socket = open_socket_or_tell();
    if (!socket) {
        return false;
    }
    Iovar address("cur_etheraddr");
    if (request_broadcom(socket.get(), broadcom_request::wl_get_variable, address) < 0) {
        print_out("[WIFI]##### ioctl Failed to send driver #####\n\n");
        return false;
    }
    mac = mac_from(address.bytes().data());
    print_out("[WIFI]MAC address from wl ioctl :-  %s\n", mac.c_str());
    return true;
}

// A product id that is neither of the two leaves the address empty.
bool read_qca_mac(const RunConfig& config, const std::string& kernel_mac, std::string& mac) {
    if (config.product_id == "9378" && firmware_mac_address_qca_combo(mac) == 0) {
        return false;
    }
    if (config.product_id == "1022" && read_fw_mac_ath6kl(mac) == 0) {
        return false;
    }
    print_out("[WIFI] prev_mac [%s] curr_mac [%s]\n", kernel_mac.c_str(), mac.c_str());
    return true;
}

bool read_chip_mac(const RunConfig& config, const std::string& kernel_mac, std::string& mac) {
    switch (run_options.chip_type) {
    case 3:
    case 5:
        return read_broadcom_mac(mac);
    case 1:
    case 2:
        return read_qca_mac(config, kernel_mac, mac);
    default:
        return true;
    }
}

// A file that cannot be written does not change the verdict.
void write_address_file(const std::string& path, const std::string& mac) {
    FileWriter file(open_to_write(path.c_str()));
    int error = file ? 0 : errno;
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
    UniqueFd socket = open_socket_or_tell();
    if (!socket) {
        return 0;
    }
    directory += "WIFIAddr";
    print_out("[WIFI]MAC address output file %s\n", directory.c_str());
    std::string kernel_mac;
    if (!read_kernel_mac(socket.get(), kernel_mac)) {
        return 0;
    }
    socket.reset();
    std::string chip_mac;
    if (!read_chip_mac(config, kernel_mac, chip_mac)) {
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

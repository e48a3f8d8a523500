// SPDX-License-Identifier: Apache-2.0
#include "diag/chip_mac_address.hpp"

#include "common/console.hpp"
#include "common/process_state.hpp"
#include "diag/broadcom_request.hpp"
#include "diag/diag_device.hpp"
#include "diag/mac_text.hpp"
#include "diag/register_files.hpp"
#include "diag/request_socket.hpp"

#include <algorithm>
#include <array>

namespace wivex {

UniqueFd open_request_socket_or_tell() {
    UniqueFd socket = open_request_socket();
    if (!socket && run_options.debug != 0) {
        print_out("[WIFI]Failed to create the socket\n");
    }
    return socket;
}

bool read_broadcom_mac(const RunConfig& /*config*/, const std::string& /*kernel_mac*/,
                       std::string& mac) {
    const UniqueFd socket = open_request_socket_or_tell();
    if (!socket) {
        return false;
    }
    Iovar address("cur_etheraddr");
    if (request_broadcom(socket.get(), broadcom_request::wl_get_variable, address) < 0) {
        print_out("[WIFI]##### ioctl Failed to send driver #####\n\n");
        return false;
    }
    std::array<std::uint8_t, 6> bytes{};
    std::copy_n(address.bytes().begin(), bytes.size(), bytes.begin());
    mac = format_mac(bytes);
    print_out("[WIFI]MAC address from wl ioctl :-  %s\n", mac.c_str());
    return true;
}

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

} // namespace wivex

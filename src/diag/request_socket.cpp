// SPDX-License-Identifier: Apache-2.0
#include "diag/request_socket.hpp"

#include <sys/socket.h>

#include <algorithm>

namespace wivex {

UniqueFd open_request_socket() {
    return UniqueFd(socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0));
}

void set_interface_name(char (&field)[IFNAMSIZ], std::string_view interface) {
    std::fill(std::begin(field), std::end(field), '\0');
    interface.copy(field, IFNAMSIZ - 1);
}

} // namespace wivex

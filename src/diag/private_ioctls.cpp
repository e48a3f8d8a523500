// SPDX-License-Identifier: Apache-2.0
#include "diag/private_ioctls.hpp"

#include "common/console.hpp"
#include "common/waiting.hpp"

#include <algorithm>
#include <cerrno>
#include <new>

namespace wivex {

namespace {

constexpr std::size_t first_capacity = 16;
constexpr std::size_t capacity_limit = 1000;

static_assert(sizeof(iw_priv_args) == 24);
static_assert(sizeof(void*) != 4 || sizeof(iwreq) == 32);

// Returns what `ioctl` returns; `count` receives the driver's count or hint.
int request_table(int fd, const char* interface, std::vector<iw_priv_args>& table,
                  std::size_t& count) {
    iwreq request{};
    set_interface_name(request.ifr_name, interface);
    request.u.data.pointer = table.data();
    request.u.data.length = static_cast<std::uint16_t>(table.size());
    const int result = wait_for_driver(fd, SIOCGIWPRIV, &request);
    count = request.u.data.length;
    return result;
}

bool fetch_table(int fd, const char* interface, std::vector<iw_priv_args>& table) {
    std::size_t capacity = first_capacity;
    while (capacity < capacity_limit) {
        table.assign(capacity, iw_priv_args{});
        std::size_t count = 0;
        if (request_table(fd, interface, table, count) >= 0) {
            // A driver cannot have filled more entries than it was given, whatever it says.
            table.resize(std::min(count, capacity));
            return true;
        }
        if (errno != E2BIG) {
            return false;
        }
        capacity = count > capacity ? count : capacity * 2;
    }
    return false;
}

} // namespace

int get_priv_ioctls(int fd, const char* interface, std::vector<iw_priv_args>& table) {
    try {
        if (fetch_table(fd, interface, table)) {
            return static_cast<int>(table.size());
        }
    } catch (const std::bad_alloc&) {
        print_err("%s: memory reallocation failed\n", "get_priv_ioctls");
    }
    table.clear();
    return -1;
}

} // namespace wivex

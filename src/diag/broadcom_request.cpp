// SPDX-License-Identifier: Apache-2.0
#include "diag/broadcom_request.hpp"

#include "common/waiting.hpp"
#include "diag/request_socket.hpp"

#include <linux/sockios.h>

#include <algorithm>
#include <bit>
#include <cstring>

namespace wivex {

namespace {

constexpr std::size_t longest_name = 29;

// The driver of the 32-bit device reads the fields at these offsets.
constexpr bool is_32_bit = sizeof(void*) == 4;
static_assert(!is_32_bit || sizeof(WlIoctlRecord) == 28);
static_assert(!is_32_bit || offsetof(WlIoctlRecord, command) == 0);
static_assert(!is_32_bit || offsetof(WlIoctlRecord, buffer) == 4);
static_assert(!is_32_bit || offsetof(WlIoctlRecord, length) == 8);
static_assert(!is_32_bit || offsetof(WlIoctlRecord, set) == 12);
static_assert(!is_32_bit || offsetof(WlIoctlRecord, used) == 16);
static_assert(!is_32_bit || offsetof(WlIoctlRecord, needed) == 20);
static_assert(!is_32_bit || offsetof(WlIoctlRecord, driver_magic) == 24);
static_assert(!is_32_bit || sizeof(ifreq) == 32);

} // namespace

Iovar::Iovar(std::string_view name) {
    const std::string_view fitting = name.substr(0, longest_name);
    std::copy(fitting.begin(), fitting.end(), bytes_.begin());
    length_ = static_cast<std::uint32_t>(fitting.size() + 1);
}

void Iovar::append(std::int32_t value) {
    if (length_ + sizeof(value) > bytes_.size()) {
        return;
    }
    const auto bytes = std::bit_cast<std::array<std::uint8_t, sizeof(value)>>(value);
    std::copy(bytes.begin(), bytes.end(), bytes_.begin() + length_);
    length_ += static_cast<std::uint32_t>(sizeof(value));
}

WlIoctlRecord make_record(const BroadcomRequest& request, Iovar& iovar) {
    WlIoctlRecord record{};
    record.command = request.command;
    record.buffer = iovar.bytes().data();
    record.length = iovar.length();
    record.set = request.set;
    record.driver_magic = request.driver_magic;
    return record;
}

int request_broadcom(int fd, const BroadcomRequest& request, Iovar& iovar) {
    WlIoctlRecord record = make_record(request, iovar);
    ifreq message{};
    set_interface_name(message.ifr_name, driver_interface);
    message.ifr_data = reinterpret_cast<char*>(&record);
    return wait_for_driver(fd, SIOCDEVPRIVATE, &message);
}

} // namespace wivex

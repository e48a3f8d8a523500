// SPDX-License-Identifier: Apache-2.0
// Netlink messages as the kernel lays them out, byte by byte.
#pragma once

#include "kernel/octets.hpp"

#include <linux/netlink.h>

#include <cstdint>
#include <span>
#include <string_view>

namespace bench {

/// Attributes one behind the other, each padded to four bytes.
class Attributes {
public:
    Attributes& add(std::uint16_t type, std::span<const std::uint8_t> value);
    Attributes& add_u16(std::uint16_t type, std::uint16_t value);
    Attributes& add_u32(std::uint16_t type, std::uint32_t value);
    Attributes& add_u64(std::uint16_t type, std::uint64_t value);
    /// With its terminating zero.
    Attributes& add_text(std::uint16_t type, std::string_view value);
    Attributes& add_nested(std::uint16_t type, const Attributes& value);

    const Octets& bytes() const {
        return bytes_;
    }

private:
    Octets bytes_;
};

/// A generic netlink message in answer to `request` (or, without one, a notification).
Octets generic_message(const nlmsghdr* request, std::uint16_t family, std::uint8_t command,
                       std::uint16_t flags, const Attributes& attributes);

/// The answer to a request: an acknowledgement, or an error number of the kernel.
Octets answer_message(const nlmsghdr& request, int error);

/// The end of a dump.
Octets done_message(const nlmsghdr& request);

} // namespace bench

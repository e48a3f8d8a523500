// SPDX-License-Identifier: Apache-2.0
// Requests to the bcmdhd driver: the one place that knows their record.
//
// A request names a driver variable ("iovar"). Its buffer holds the name, a NUL and the values that
// go with it, and takes the driver's answer.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace wivex {

/// The record as the driver reads it: natural alignment, host byte order.
struct WlIoctlRecord {
    std::uint32_t command;
    void* buffer;
    std::uint32_t length;
    std::uint8_t set;
    std::array<std::uint8_t, 3> padding;
    std::uint32_t used;
    std::uint32_t needed;
    std::uint32_t driver_magic;
};

/// A variable's name and values, and in the same bytes the answer.
class Iovar {
public:
    static constexpr std::size_t capacity = 128;

    /// Begins with `name` and a NUL. Names have at most 29 characters; a longer one is cut.
    explicit Iovar(std::string_view name);

    /// Appends `value`, four bytes in host byte order. A value that does not fit is left out.
    void append(std::int32_t value);

    /// Length of the name, its NUL and the values.
    std::uint32_t length() const {
        return length_;
    }
    std::array<std::uint8_t, capacity>& bytes() {
        return bytes_;
    }
    const std::array<std::uint8_t, capacity>& bytes() const {
        return bytes_;
    }

private:
    std::array<std::uint8_t, capacity> bytes_{};
    std::uint32_t length_ = 0;
};

/// What is asked, and of which layer of the driver.
struct BroadcomRequest {
    std::uint32_t command;
    std::uint8_t set;
    std::uint32_t driver_magic;
};

namespace broadcom_request {

inline constexpr BroadcomRequest wl_get_variable{262, 0, 0};
inline constexpr BroadcomRequest wl_set_variable{263, 1, 0};
/// Goes to the driver itself instead of its wl layer.
inline constexpr BroadcomRequest driver_set_variable{3, 1, 0x00444944};

} // namespace broadcom_request

/// The record that asks `request` with the buffer of `iovar`, which must outlive it.
WlIoctlRecord make_record(const BroadcomRequest& request, Iovar& iovar);

/// Sends the request through the socket `fd`; the answer replaces the bytes of `iovar`. Returns
/// what `ioctl` returns: negative when the driver refuses.
int request_broadcom(int fd, const BroadcomRequest& request, Iovar& iovar);

} // namespace wivex

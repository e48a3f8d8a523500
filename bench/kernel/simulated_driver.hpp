// SPDX-License-Identifier: Apache-2.0
// The driver of wlan0: answers the requests that no ordinary kernel answers, as the scenario says.
#pragma once

#include "language/driver_script.hpp"

#include <linux/sockios.h>
#include <linux/wireless.h>

#include <cstddef>
#include <map>
#include <optional>

namespace bench {

/// The private request that asks for an answer of the chip.
inline constexpr unsigned long private_get_request = SIOCIWFIRSTPRIV + 5;

class SimulatedDriver {
public:
    explicit SimulatedDriver(DriverScript script);

    /// Answers a request to a socket and logs it. Returns what ioctl() returns, with errno set, or
    /// nothing when the kernel is to answer.
    std::optional<int> answer(unsigned long request, void* argument);

    /// The error number with which the next socket to ask through is refused; 0 when it is given.
    int refuse_socket();

private:
    /// Whether the scenario has an answer to a request of this kind; else the kernel has.
    bool speaks_of(RequestKind kind) const;

    /// The answer to the next request of this kind and name, or null when the kernel is to answer.
    const DriverAnswer* next_answer(const DriverRequest& request);

    DriverScript script_;
    std::map<DriverRequest, int> counts_;
};

} // namespace bench

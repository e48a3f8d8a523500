// SPDX-License-Identifier: Apache-2.0
// The kernel's generic netlink as the tool meets it: the controller, and nl80211 for one interface.
#pragma once

#include "kernel/netlink_message.hpp"
#include "language/air_script.hpp"

#include <vector>

namespace bench {

struct NetlinkAnswer {
    /// Datagrams that can be received at once.
    std::vector<Octets> now;
    /// Datagrams that come when the scan has gone on for a while.
    std::vector<Octets> later;
    /// Whether messages are lost before those that come later.
    bool overflow = false;
    /// Whether the next receive only tells that messages were lost.
    bool lost = false;
};

class SimulatedNl80211 {
public:
    explicit SimulatedNl80211(AirScript script);

    /// Answers one message of the tool.
    NetlinkAnswer answer(const nlmsghdr& request);

    int scan_ms() const {
        return script_.scan_ms;
    }

private:
    NetlinkAnswer describe_family(const nlmsghdr& request) const;
    NetlinkAnswer trigger(const nlmsghdr& request);
    NetlinkAnswer dump(const nlmsghdr& request) const;
    const AirEvent* event(AirFault fault) const;

    AirScript script_;
    int scan_ = 0;
};

} // namespace bench

// SPDX-License-Identifier: Apache-2.0
#include "kernel/simulated_nl80211.hpp"

#include <linux/genetlink.h>
#include <linux/nl80211.h>

#include <algorithm>
#include <cerrno>
#include <utility>

namespace bench {

namespace {

constexpr std::uint16_t family_id = 0x1c;
constexpr std::uint32_t scan_group_id = 7;
constexpr std::uint32_t interface_index = 2;

// The kernel fills a datagram of a dump up to about a page.
constexpr std::size_t datagram_size = 3500;

std::uint8_t command_of(const nlmsghdr& request) {
    return static_cast<const genlmsghdr*>(NLMSG_DATA(&request))->cmd;
}

Octets notification(std::uint8_t command) {
    return generic_message(nullptr, family_id, command, 0,
                           Attributes().add_u32(NL80211_ATTR_IFINDEX, interface_index));
}

Attributes bss_of(const HeardAccessPoint& access_point) {
    Attributes bss;
    bss.add(NL80211_BSS_BSSID, access_point.bssid);
    bss.add_u64(NL80211_BSS_TSF, 123456789);
    if (access_point.has_elements) {
        bss.add(NL80211_BSS_INFORMATION_ELEMENTS, access_point.elements);
    }
    bss.add_u16(NL80211_BSS_BEACON_INTERVAL, 100);
    bss.add_u32(NL80211_BSS_FREQUENCY, 2412);
    bss.add_u32(NL80211_BSS_SIGNAL_MBM, static_cast<std::uint32_t>(access_point.signal_mbm));
    return bss;
}

Octets bss_message(const nlmsghdr& request, const Attributes& bss) {
    return generic_message(&request, family_id, NL80211_CMD_NEW_SCAN_RESULTS, NLM_F_MULTI,
                           Attributes()
                               .add_u32(NL80211_ATTR_GENERATION, 1)
                               .add_u32(NL80211_ATTR_IFINDEX, interface_index)
                               .add_nested(NL80211_ATTR_BSS, bss));
}

Octets message_without_bss(const nlmsghdr& request) {
    return generic_message(&request, family_id, NL80211_CMD_NEW_SCAN_RESULTS, NLM_F_MULTI,
                           Attributes().add_u32(NL80211_ATTR_GENERATION, 1));
}

// A frequency of two bytes where four are required.
Attributes malformed_bss() {
    return Attributes().add_u16(NL80211_BSS_FREQUENCY, 2412);
}

std::vector<Octets> pack(const std::vector<Octets>& messages) {
    std::vector<Octets> datagrams(1);
    for (const Octets& message : messages) {
        if (datagrams.back().size() + message.size() > datagram_size) {
            datagrams.emplace_back();
        }
        datagrams.back().insert(datagrams.back().end(), message.begin(), message.end());
    }
    return datagrams;
}

} // namespace

SimulatedNl80211::SimulatedNl80211(AirScript script) : script_(std::move(script)) {}

const AirEvent* SimulatedNl80211::event(AirFault fault) const {
    const auto found =
        std::find_if(script_.events.begin(), script_.events.end(), [&](const AirEvent& event) {
            return event.fault == fault && event.scans.contain(scan_);
        });
    return found == script_.events.end() ? nullptr : &*found;
}

NetlinkAnswer SimulatedNl80211::answer(const nlmsghdr& request) {
    if (request.nlmsg_type == GENL_ID_CTRL) {
        return describe_family(request);
    }
    if (request.nlmsg_type == family_id && command_of(request) == NL80211_CMD_TRIGGER_SCAN) {
        return trigger(request);
    }
    if (request.nlmsg_type == family_id && command_of(request) == NL80211_CMD_GET_SCAN) {
        return dump(request);
    }
    if (request.nlmsg_type < NLMSG_MIN_TYPE) {
        return {{answer_message(request, 0)}, {}};
    }
    const int refusal = request.nlmsg_type == family_id ? EOPNOTSUPP : ENOENT;
    return {{answer_message(request, refusal)}, {}};
}

NetlinkAnswer SimulatedNl80211::describe_family(const nlmsghdr& request) const {
    if (!script_.has_nl80211) {
        return {{answer_message(request, ENOENT)}, {}};
    }
    Attributes groups;
    groups.add_nested(1, Attributes()
                             .add_text(CTRL_ATTR_MCAST_GRP_NAME, "config")
                             .add_u32(CTRL_ATTR_MCAST_GRP_ID, scan_group_id - 1));
    if (script_.has_scan_group) {
        groups.add_nested(2, Attributes()
                                 .add_text(CTRL_ATTR_MCAST_GRP_NAME, "scan")
                                 .add_u32(CTRL_ATTR_MCAST_GRP_ID, scan_group_id));
    }
    const Attributes family = Attributes()
                                  .add_text(CTRL_ATTR_FAMILY_NAME, "nl80211")
                                  .add_u16(CTRL_ATTR_FAMILY_ID, family_id)
                                  .add_u32(CTRL_ATTR_VERSION, 1)
                                  .add_u32(CTRL_ATTR_HDRSIZE, 0)
                                  .add_u32(CTRL_ATTR_MAXATTR, NL80211_ATTR_MAX)
                                  .add_nested(CTRL_ATTR_MCAST_GROUPS, groups);
    return {{generic_message(&request, GENL_ID_CTRL, CTRL_CMD_NEWFAMILY, 0, family),
             answer_message(request, 0)},
            {}};
}

NetlinkAnswer SimulatedNl80211::trigger(const nlmsghdr& request) {
    ++scan_;
    if (const AirEvent* refused = event(AirFault::refuses)) {
        return {{answer_message(request, refused->number)}, {}};
    }
    NetlinkAnswer answer;
    answer.now.push_back(notification(NL80211_CMD_TRIGGER_SCAN));
    answer.lost = event(AirFault::loses_answer) != nullptr;
    if (!answer.lost) {
        answer.now.push_back(answer_message(request, 0));
    }
    answer.overflow = event(AirFault::overflows) != nullptr;
    if (event(AirFault::never_ends) != nullptr) {
        return answer;
    }
    const std::uint8_t end = event(AirFault::aborts) != nullptr ? NL80211_CMD_SCAN_ABORTED
                                                                : NL80211_CMD_NEW_SCAN_RESULTS;
    const AirEvent* const repeated = event(AirFault::repeats);
    const int times = 1 + (repeated == nullptr ? 0 : repeated->number);
    for (int count = 0; count < times; ++count) {
        answer.later.push_back(notification(end));
    }
    return answer;
}

NetlinkAnswer SimulatedNl80211::dump(const nlmsghdr& request) const {
    if (const AirEvent* failed = event(AirFault::fails)) {
        return {{answer_message(request, failed->number)}, {}};
    }
    std::vector<Octets> messages;
    for (const HeardAccessPoint& access_point : script_.access_points) {
        if (access_point.scans.contain(scan_)) {
            messages.push_back(bss_message(request, bss_of(access_point)));
        }
    }
    if (event(AirFault::malformed) != nullptr) {
        messages.insert(messages.begin(), bss_message(request, malformed_bss()));
    }
    if (event(AirFault::empty) != nullptr) {
        messages.insert(messages.begin(), message_without_bss(request));
    }
    const AirEvent* const cut = event(AirFault::cut);
    if (cut != nullptr) {
        messages.resize(std::min(messages.size(), static_cast<std::size_t>(cut->number)));
    }
    NetlinkAnswer answer{pack(messages), {}};
    answer.lost = event(AirFault::loses_dump) != nullptr;
    if (cut == nullptr) {
        answer.now.push_back(done_message(request));
    }
    std::erase_if(answer.now, [](const Octets& datagram) { return datagram.empty(); });
    return answer;
}

} // namespace bench

// SPDX-License-Identifier: Apache-2.0
#include "diag/nl80211.hpp"

#include <linux/nl80211.h>
#include <netlink/attr.h>
#include <netlink/genl/genl.h>
#include <netlink/msg.h>

#include <algorithm>

namespace wivex {

namespace {

constexpr int wildcard_ssid_type = 1;

using BssAttributes = std::array<nlattr*, NL80211_BSS_MAX + 1>;

constexpr std::array<nla_policy, NL80211_BSS_MAX + 1> make_bss_policy() {
    std::array<nla_policy, NL80211_BSS_MAX + 1> policy{};
    policy[NL80211_BSS_TSF].type = NLA_U64;
    policy[NL80211_BSS_FREQUENCY].type = NLA_U32;
    policy[NL80211_BSS_BSSID].type = NLA_UNSPEC;
    policy[NL80211_BSS_BEACON_INTERVAL].type = NLA_U16;
    policy[NL80211_BSS_CAPABILITY].type = NLA_U16;
    policy[NL80211_BSS_INFORMATION_ELEMENTS].type = NLA_UNSPEC;
    policy[NL80211_BSS_SIGNAL_MBM].type = NLA_U32;
    policy[NL80211_BSS_SIGNAL_UNSPEC].type = NLA_U8;
    policy[NL80211_BSS_STATUS].type = NLA_U32;
    policy[NL80211_BSS_SEEN_MS_AGO].type = NLA_U32;
    policy[NL80211_BSS_BEACON_IES].type = NLA_UNSPEC;
    return policy;
}

constexpr auto bss_policy = make_bss_policy();

Bytes payload(const nlattr* attribute) {
    return {static_cast<const std::uint8_t*>(nla_data(attribute)),
            static_cast<std::size_t>(nla_len(attribute))};
}

// Null when the message is too short for a generic netlink header.
genlmsghdr* generic_header(nl_msg* message) {
    nlmsghdr* const header = nlmsg_hdr(message);
    return genlmsg_valid_hdr(header, 0) != 0 ? static_cast<genlmsghdr*>(nlmsg_data(header))
                                             : nullptr;
}

nlattr* find_bss(nl_msg* message) {
    genlmsghdr* const header = generic_header(message);
    if (header == nullptr) {
        return nullptr;
    }
    // Of several the last one counts. A table of all attributes would be 300 pointers to clear.
    nlattr* bss = nullptr;
    int left = genlmsg_attrlen(header, 0);
    for (nlattr* attribute = genlmsg_attrdata(header, 0); nla_ok(attribute, left) != 0;
         attribute = nla_next(attribute, &left)) {
        if (nla_type(attribute) == NL80211_ATTR_BSS) {
            bss = attribute;
        }
    }
    return bss;
}

BssParse take_bss(const BssAttributes& attributes, BssEntry& bss) {
    const nlattr* const bssid = attributes[NL80211_BSS_BSSID];
    const nlattr* const elements = attributes[NL80211_BSS_INFORMATION_ELEMENTS];
    const nlattr* const signal = attributes[NL80211_BSS_SIGNAL_MBM];
    if (bssid == nullptr || elements == nullptr || payload(bssid).size() < bss.bssid.size()) {
        return BssParse::incomplete;
    }
    std::copy_n(payload(bssid).begin(), bss.bssid.size(), bss.bssid.begin());
    bss.signal_mbm = signal == nullptr ? 0 : static_cast<std::int32_t>(nla_get_u32(signal));
    bss.elements = payload(elements);
    return BssParse::complete;
}

bool begin(nl_msg* message, int family, int flags, std::uint8_t command, unsigned interface_index) {
    return genlmsg_put(message, NL_AUTO_PORT, NL_AUTO_SEQ, family, 0, flags, command, 0) !=
               nullptr &&
           nla_put_u32(message, NL80211_ATTR_IFINDEX, interface_index) == 0;
}

} // namespace

BssParse parse_bss(nl_msg* message, BssEntry& bss) {
    nlattr* const nested = find_bss(message);
    if (nested == nullptr) {
        return BssParse::no_bss;
    }
    BssAttributes attributes{};
    if (nla_parse_nested(attributes.data(), NL80211_BSS_MAX, nested, bss_policy.data()) != 0) {
        return BssParse::malformed;
    }
    return take_bss(attributes, bss);
}

int command_of(nl_msg* message) {
    const genlmsghdr* const header = generic_header(message);
    return header == nullptr ? -1 : header->cmd;
}

bool make_scan_trigger(nl_msg* message, nl_msg* ssids, int family, unsigned interface_index) {
    return begin(message, family, 0, NL80211_CMD_TRIGGER_SCAN, interface_index) &&
           nla_put(ssids, wildcard_ssid_type, 0, "") == 0 &&
           nla_put_nested(message, NL80211_ATTR_SCAN_SSIDS, ssids) == 0;
}

bool make_scan_dump(nl_msg* message, int family, unsigned interface_index) {
    return begin(message, family, NLM_F_DUMP, NL80211_CMD_GET_SCAN, interface_index);
}

} // namespace wivex

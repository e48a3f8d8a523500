// SPDX-License-Identifier: Apache-2.0
#include "diag/netlink.hpp"
#include "diag/nl80211.hpp"

#include <gtest/gtest.h>
#include <linux/nl80211.h>
#include <netlink/attr.h>
#include <netlink/genl/genl.h>

#include <array>
#include <string_view>

namespace wivex {
namespace {

constexpr int family = 28;
constexpr std::array<std::uint8_t, 6> bssid{2, 0, 0, 0, 1, 10};
constexpr std::array<std::uint8_t, 4> elements{0, 2, 'a', 'b'};

NetlinkMessage results_message() {
    NetlinkMessage message(nlmsg_alloc());
    genlmsg_put(message.get(), 0, 0, family, 0, 0, NL80211_CMD_NEW_SCAN_RESULTS, 1);
    return message;
}

template <std::size_t Count>
void put_bss(nl_msg* message, const std::array<std::uint8_t, Count>& address) {
    nlattr* const bss = nla_nest_start(message, NL80211_ATTR_BSS);
    nla_put(message, NL80211_BSS_BSSID, Count, address.data());
    nla_put(message, NL80211_BSS_INFORMATION_ELEMENTS, elements.size(), elements.data());
    nla_nest_end(message, bss);
}

TEST(ParseBss, reads_address_signal_and_elements) {
    const NetlinkMessage message = results_message();
    nlattr* const nested = nla_nest_start(message.get(), NL80211_ATTR_BSS);
    nla_put(message.get(), NL80211_BSS_BSSID, bssid.size(), bssid.data());
    nla_put(message.get(), NL80211_BSS_INFORMATION_ELEMENTS, elements.size(), elements.data());
    nla_put_u32(message.get(), NL80211_BSS_SIGNAL_MBM, static_cast<std::uint32_t>(-5512));
    nla_nest_end(message.get(), nested);
    BssEntry bss;
    EXPECT_EQ(parse_bss(message.get(), bss), BssParse::complete);
    EXPECT_EQ(bss.bssid, bssid);
    EXPECT_EQ(bss.signal_mbm, -5512);
    EXPECT_TRUE(
        std::equal(bss.elements.begin(), bss.elements.end(), elements.begin(), elements.end()));
}

TEST(ParseBss, takes_a_missing_signal_for_0) {
    const NetlinkMessage message = results_message();
    put_bss(message.get(), bssid);
    BssEntry bss;
    EXPECT_EQ(parse_bss(message.get(), bss), BssParse::complete);
    EXPECT_EQ(bss.signal_mbm, 0);
}

TEST(ParseBss, finds_an_address_that_is_too_short_incomplete) {
    const NetlinkMessage message = results_message();
    put_bss(message.get(), std::array<std::uint8_t, 5>{2, 0, 0, 0, 1});
    BssEntry bss;
    EXPECT_EQ(parse_bss(message.get(), bss), BssParse::incomplete);
}

TEST(ParseBss, finds_nothing_in_a_message_that_is_too_short_for_its_header) {
    const NetlinkMessage message(nlmsg_alloc_simple(family, 0));
    BssEntry bss;
    EXPECT_EQ(parse_bss(message.get(), bss), BssParse::no_bss);
}

struct SizedAttribute {
    const char* name;
    int type;
    int size;
};

class SizedBssAttribute : public testing::TestWithParam<SizedAttribute> {
protected:
    static BssParse parse_with(int size) {
        const NetlinkMessage message = results_message();
        constexpr std::array<std::uint8_t, 8> zeros{};
        nlattr* const nested = nla_nest_start(message.get(), NL80211_ATTR_BSS);
        nla_put(message.get(), NL80211_BSS_BSSID, bssid.size(), bssid.data());
        nla_put(message.get(), NL80211_BSS_INFORMATION_ELEMENTS, elements.size(), elements.data());
        nla_put(message.get(), GetParam().type, size, zeros.data());
        nla_nest_end(message.get(), nested);
        BssEntry bss;
        return parse_bss(message.get(), bss);
    }
};

TEST_P(SizedBssAttribute, makes_a_bss_malformed_when_it_is_too_short) {
    EXPECT_EQ(parse_with(GetParam().size), BssParse::complete);
    EXPECT_EQ(parse_with(GetParam().size - 1), BssParse::malformed);
}

INSTANTIATE_TEST_SUITE_P(
    Attributes, SizedBssAttribute,
    testing::Values(SizedAttribute{"tsf", NL80211_BSS_TSF, 8},
                    SizedAttribute{"frequency", NL80211_BSS_FREQUENCY, 4},
                    SizedAttribute{"beacon_interval", NL80211_BSS_BEACON_INTERVAL, 2},
                    SizedAttribute{"capability", NL80211_BSS_CAPABILITY, 2},
                    SizedAttribute{"signal_mbm", NL80211_BSS_SIGNAL_MBM, 4},
                    SizedAttribute{"signal_unspec", NL80211_BSS_SIGNAL_UNSPEC, 1},
                    SizedAttribute{"status", NL80211_BSS_STATUS, 4},
                    SizedAttribute{"seen_ms_ago", NL80211_BSS_SEEN_MS_AGO, 4}),
    [](const auto& attribute) { return attribute.param.name; });

TEST(CommandOf, is_the_command_of_the_generic_header) {
    EXPECT_EQ(command_of(results_message().get()), NL80211_CMD_NEW_SCAN_RESULTS);
}

TEST(CommandOf, is_minus_1_for_a_message_that_is_too_short) {
    EXPECT_EQ(command_of(NetlinkMessage(nlmsg_alloc_simple(family, 0)).get()), -1);
}

TEST(ScanRequests, ask_for_a_scan_and_for_a_dump_of_what_it_found) {
    const NetlinkMessage trigger(nlmsg_alloc());
    const NetlinkMessage ssids(nlmsg_alloc());
    ASSERT_TRUE(make_scan_trigger(trigger.get(), ssids.get(), family, 2));
    EXPECT_EQ(command_of(trigger.get()), NL80211_CMD_TRIGGER_SCAN);
    EXPECT_EQ(nlmsg_hdr(trigger.get())->nlmsg_flags, 0);
    const NetlinkMessage dump(nlmsg_alloc());
    ASSERT_TRUE(make_scan_dump(dump.get(), family, 2));
    EXPECT_EQ(command_of(dump.get()), NL80211_CMD_GET_SCAN);
    EXPECT_EQ(nlmsg_hdr(dump.get())->nlmsg_flags, NLM_F_DUMP);
}

TEST(ScanRequests, fail_when_the_message_has_no_room) {
    const NetlinkMessage ssids(nlmsg_alloc());
    // The netlink header alone, the generic header too, and one attribute besides.
    for (const std::size_t room : {NLMSG_HDRLEN + 0U, NLMSG_HDRLEN + 4U, NLMSG_HDRLEN + 12U}) {
        const NetlinkMessage trigger(nlmsg_alloc_size(room));
        EXPECT_FALSE(make_scan_trigger(trigger.get(), ssids.get(), family, 2)) << room;
    }
    const NetlinkMessage dump(nlmsg_alloc_size(NLMSG_HDRLEN + 4));
    EXPECT_FALSE(make_scan_dump(dump.get(), family, 2));
}

TEST(ScanRequests, fail_when_the_list_of_names_has_no_room) {
    const NetlinkMessage trigger(nlmsg_alloc());
    const NetlinkMessage ssids(nlmsg_alloc_size(NLMSG_HDRLEN));
    EXPECT_FALSE(make_scan_trigger(trigger.get(), ssids.get(), family, 2));
}

} // namespace
} // namespace wivex

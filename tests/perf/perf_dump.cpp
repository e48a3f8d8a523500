// SPDX-License-Identifier: Apache-2.0
// One scan with its listing, by the tool's own code or by a bare loop over the same library that
// parses the same attributes and writes the same bytes. To be started by the bench in place of the
// tool, and to be counted in instructions from outside.

#include "diag/netlink.hpp"
#include "diag/nl80211.hpp"
#include "diag/nl80211_scan.hpp"

#include <fcntl.h>
#include <linux/nl80211.h>
#include <net/if.h>
#include <netlink/genl/ctrl.h>
#include <netlink/genl/genl.h>
#include <netlink/msg.h>
#include <unistd.h>

#include <array>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace {

/// Room for the listing of 300 access points.
struct BareListing {
    std::array<char, 65536> text{};
    char* end = text.data();

    void put(std::string_view part) {
        end += part.copy(end, part.size());
    }
    void put_hex(std::uint8_t byte) {
        constexpr std::string_view digits = "0123456789ABCDEF";
        *end++ = digits[byte >> 4U];
        *end++ = digits[byte & 0xFU];
    }
    void put_number(int number) {
        end = std::to_chars(end, end + 12, number).ptr;
    }
};

void put_signal(BareListing& listing, int mbm) {
    listing.put_number(mbm / 100);
    listing.put(mbm % 100 == 0 ? "." : ".-");
    listing.put(mbm % 100 > -10 ? "0" : "");
    listing.put_number(-(mbm % 100));
}

// Names of the rehearsed air are plain text.
void put_ssid(BareListing& listing, const nlattr* elements) {
    const auto* element = static_cast<const std::uint8_t*>(nla_data(elements));
    const auto* const end = element + nla_len(elements);
    while (element + 2 <= end && element[0] != 0) {
        element += 2 + element[1];
    }
    for (int i = 0; i < element[1]; ++i) {
        *listing.end++ = static_cast<char>(element[2 + i]);
    }
}

int list_bss(nl_msg* message, void* argument) {
    auto& listing = *static_cast<BareListing*>(argument);
    auto* const header = static_cast<genlmsghdr*>(nlmsg_data(nlmsg_hdr(message)));
    nlattr* const nested =
        nla_find(genlmsg_attrdata(header, 0), genlmsg_attrlen(header, 0), NL80211_ATTR_BSS);
    std::array<nlattr*, NL80211_BSS_MAX + 1> bss{};
    nla_parse_nested(bss.data(), NL80211_BSS_MAX, nested, nullptr);
    const auto* const bssid = static_cast<const std::uint8_t*>(nla_data(bss[NL80211_BSS_BSSID]));
    listing.put("BSS ");
    for (int i = 0; i < 6; ++i) {
        listing.put(i == 0 ? "" : ":");
        listing.put_hex(bssid[i]);
    }
    listing.put(" \n\tsignal: ");
    put_signal(listing, static_cast<int>(nla_get_u32(bss[NL80211_BSS_SIGNAL_MBM])));
    listing.put(" dBm\n\tSSID: ");
    put_ssid(listing, bss[NL80211_BSS_INFORMATION_ELEMENTS]);
    listing.put("\n");
    return NL_SKIP;
}

// The trigger is not what is compared: both take the tool's own.
bool trigger() {
    const wivex::NetlinkSocket socket = wivex::open_generic_netlink();
    const int family = genl_ctrl_resolve(socket.get(), "nl80211");
    return wivex::do_scan_trigger(socket.get(), if_nametoindex("wlan0"), family) == 0;
}

bool dump_bare() {
    static BareListing listing;
    const wivex::NetlinkSocket socket(nl_socket_alloc());
    genl_connect(socket.get());
    const int family = genl_ctrl_resolve(socket.get(), "nl80211");
    const wivex::NetlinkMessage message(nlmsg_alloc());
    wivex::make_scan_dump(message.get(), family, if_nametoindex("wlan0"));
    nl_socket_modify_cb(socket.get(), NL_CB_VALID, NL_CB_CUSTOM, list_bss, &listing);
    nl_send_auto_complete(socket.get(), message.get());
    if (nl_recvmsgs_default(socket.get()) < 0) {
        return false;
    }
    const int file = open("/tmp/output", O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    const auto length = static_cast<std::size_t>(listing.end - listing.text.data());
    return write(file, listing.text.data(), length) == static_cast<ssize_t>(length) &&
           close(file) == 0;
}

} // namespace

int main(int argc, char** argv) {
    const std::string_view way(argc == 2 ? argv[1] : "");
    if (way != "tool" && way != "bare") {
        std::puts("usage: perf_dump tool | bare");
        return 2;
    }
    return (way == "tool" ? wivex::execute_scan_nl_command() == 0 : trigger() && dump_bare()) ? 0
                                                                                              : 1;
}

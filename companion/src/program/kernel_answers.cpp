// SPDX-License-Identifier: Apache-2.0
#include "program/kernel_answers.hpp"

#include "common/unique_file.hpp"

#include <linux/ethtool.h>
#include <linux/nl80211.h>
#include <linux/sockios.h>
#include <net/if.h>
#include <netlink/genl/ctrl.h>
#include <netlink/genl/genl.h>
#include <sys/ioctl.h>
#include <sys/socket.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <string_view>

namespace wivex::report {

namespace {

struct FreeSocket {
    void operator()(nl_sock* socket) const {
        nl_socket_free(socket);
    }
};

struct FreeMessage {
    void operator()(nl_msg* message) const {
        nlmsg_free(message);
    }
};

using Socket = std::unique_ptr<nl_sock, FreeSocket>;
using Message = std::unique_ptr<nl_msg, FreeMessage>;

template <std::size_t size>
std::string text_in(const char (&field)[size]) {
    return {field, strnlen(field, size)};
}

int keep_country(nl_msg* message, void* country) {
    const auto* const header = static_cast<const genlmsghdr*>(nlmsg_data(nlmsg_hdr(message)));
    nlattr* const found =
        nla_find(genlmsg_attrdata(header, 0), genlmsg_attrlen(header, 0), NL80211_ATTR_REG_ALPHA2);
    constexpr int letters = 2;
    if (found != nullptr && nla_len(found) >= letters) {
        static_cast<std::string*>(country)->assign(static_cast<const char*>(nla_data(found)),
                                                   letters);
    }
    return NL_OK;
}

} // namespace

DriverAnswer ask_driver(const std::string& interface) {
    const UniqueFile socket_file(socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    ethtool_drvinfo answer{};
    answer.cmd = ETHTOOL_GDRVINFO;
    ifreq request{};
    interface.copy(request.ifr_name, IFNAMSIZ - 1);
    request.ifr_data = reinterpret_cast<char*>(&answer);
    if (!socket_file.is_open() || ioctl(socket_file.get(), SIOCETHTOOL, &request) != 0) {
        return {};
    }
    return {text_in(answer.driver), text_in(answer.version), text_in(answer.fw_version)};
}

std::string regulatory_domain(const std::string& interface) {
    std::string country;
    const unsigned index = if_nametoindex(interface.c_str());
    const Socket socket(nl_socket_alloc());
    const Message message(nlmsg_alloc());
    if (index == 0 || !socket || !message || genl_connect(socket.get()) != 0) {
        return country;
    }
    const int family = genl_ctrl_resolve(socket.get(), "nl80211");
    if (family < 0) {
        return country;
    }
    genlmsg_put(message.get(), NL_AUTO_PORT, NL_AUTO_SEQ, family, 0, 0, NL80211_CMD_GET_REG, 0);
    nla_put_u32(message.get(), NL80211_ATTR_IFINDEX, index);
    nl_socket_modify_cb(socket.get(), NL_CB_VALID, NL_CB_CUSTOM, keep_country, &country);
    if (nl_send_auto(socket.get(), message.get()) >= 0) {
        nl_recvmsgs_default(socket.get());
    }
    return country;
}

} // namespace wivex::report

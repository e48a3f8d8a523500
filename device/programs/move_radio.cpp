// SPDX-License-Identifier: Apache-2.0
// move-radio INTERFACE NAMESPACE_FILE: move the radio that an interface belongs to, with all its
// interfaces, into a network namespace (a bound file such as /run/netns/room). Exit status 0 or 1.
#include <fcntl.h>
#include <linux/nl80211.h>
#include <netlink/genl/ctrl.h>
#include <netlink/genl/genl.h>
#include <netlink/netlink.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <fstream>
#include <memory>
#include <optional>
#include <string>

namespace {

using Socket = std::unique_ptr<nl_sock, decltype([](nl_sock* socket) { nl_socket_free(socket); })>;
using Message = std::unique_ptr<nl_msg, decltype([](nl_msg* message) { nlmsg_free(message); })>;

std::optional<std::uint32_t> radio_of(const std::string& interface) {
    std::ifstream file("/sys/class/net/" + interface + "/phy80211/index");
    std::uint32_t index = 0;
    if (!(file >> index)) {
        return std::nullopt;
    }
    return index;
}

// Returns 0 or libnl's negative error.
int move_radio(std::uint32_t radio, int namespace_descriptor) {
    const Socket socket(nl_socket_alloc());
    const Message message(nlmsg_alloc());
    if (!socket || !message) {
        return -NLE_NOMEM;
    }
    if (const int error = genl_connect(socket.get()); error < 0) {
        return error;
    }
    const int family = genl_ctrl_resolve(socket.get(), NL80211_GENL_NAME);
    if (family < 0) {
        return family;
    }
    genlmsg_put(message.get(), NL_AUTO_PORT, NL_AUTO_SEQ, family, 0, 0, NL80211_CMD_SET_WIPHY_NETNS,
                0);
    nla_put_u32(message.get(), NL80211_ATTR_WIPHY, radio);
    nla_put_u32(message.get(), NL80211_ATTR_NETNS_FD,
                static_cast<std::uint32_t>(namespace_descriptor));
    if (const int error = nl_send_auto(socket.get(), message.get()); error < 0) {
        return error;
    }
    return nl_wait_for_ack(socket.get());
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fputs("usage: move-radio INTERFACE NAMESPACE_FILE\n", stderr);
        return 1;
    }
    const auto radio = radio_of(argv[1]);
    if (!radio) {
        std::fprintf(stderr, "move-radio: %s belongs to no radio\n", argv[1]);
        return 1;
    }
    const int descriptor = open(argv[2], O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) {
        std::perror(argv[2]);
        return 1;
    }
    const int error = move_radio(*radio, descriptor);
    close(descriptor);
    if (error < 0) {
        std::fprintf(stderr, "move-radio: %s\n", nl_geterror(error));
        return 1;
    }
    return 0;
}

// SPDX-License-Identifier: Apache-2.0
// bare-scan ITERATIONS: what an iteration of a scan asks the kernel for, over the bare library, and
// nothing else: what comes back is not looked at, and nothing is printed. The floor that the tool
// is held against. Exit status 0, or 1 when a call fails or no access point is heard.
#include "bare_iteration.hpp"

#include <fcntl.h>
#include <linux/nl80211.h>
#include <net/if.h>
#include <netlink/genl/ctrl.h>
#include <netlink/genl/genl.h>
#include <netlink/netlink.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

namespace {

using Socket = std::unique_ptr<nl_sock, decltype([](nl_sock* socket) { nl_socket_free(socket); })>;
using Message = std::unique_ptr<nl_msg, decltype([](nl_msg* message) { nlmsg_free(message); })>;

constexpr std::size_t longest_message = 32768;
constexpr int wildcard_ssid_type = 1;

// As long as three lines for each access point are.
constexpr std::size_t listing_of_one = 64;

Socket open_socket() {
    Socket socket(nl_socket_alloc());
    nl_socket_disable_seq_check(socket.get());
    nl_socket_disable_msg_peek(socket.get());
    nl_socket_set_msg_buf_size(socket.get(), longest_message);
    return genl_connect(socket.get()) == 0 ? std::move(socket) : nullptr;
}

int note_end_of_scan(nl_msg* message, void* argument) {
    const auto* const header = static_cast<const genlmsghdr*>(nlmsg_data(nlmsg_hdr(message)));
    *static_cast<bool*>(argument) = header->cmd == NL80211_CMD_NEW_SCAN_RESULTS;
    return NL_SKIP;
}

int count_bss(nl_msg* /*message*/, void* argument) {
    ++*static_cast<std::size_t*>(argument);
    return NL_SKIP;
}

Message request(int family, int flags, std::uint8_t command) {
    Message message(nlmsg_alloc());
    genlmsg_put(message.get(), NL_AUTO_PORT, NL_AUTO_SEQ, family, 0, flags, command, 0);
    nla_put_u32(message.get(), NL80211_ATTR_IFINDEX, if_nametoindex("wlan0"));
    return message;
}

bool trigger_and_wait(nl_sock* socket, int family) {
    const int group = genl_ctrl_resolve_grp(socket, NL80211_GENL_NAME, "scan");
    nl_socket_add_membership(socket, group);
    const Message message = request(family, 0, NL80211_CMD_TRIGGER_SCAN);
    nlattr* const names = nla_nest_start(message.get(), NL80211_ATTR_SCAN_SSIDS);
    nla_put(message.get(), wildcard_ssid_type, 0, "");
    nla_nest_end(message.get(), names);
    bool ended = false;
    nl_socket_modify_cb(socket, NL_CB_VALID, NL_CB_CUSTOM, note_end_of_scan, &ended);
    nl_send_auto(socket, message.get());
    while (!ended) {
        if (nl_recvmsgs_default(socket) < 0) {
            return false;
        }
    }
    nl_socket_drop_membership(socket, group);
    return true;
}

std::size_t dump(nl_sock* socket, int family) {
    const Message message = request(family, NLM_F_DUMP, NL80211_CMD_GET_SCAN);
    std::size_t heard = 0;
    nl_socket_modify_cb(socket, NL_CB_VALID, NL_CB_CUSTOM, count_bss, &heard);
    nl_send_auto(socket, message.get());
    return nl_recvmsgs_default(socket) < 0 ? 0 : heard;
}

bool write_file(const char* path, std::size_t length) {
    constexpr std::array<char, 65536> nothing{};
    const int file = open(path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    const ssize_t written = write(file, nothing.data(), length);
    return close(file) == 0 && written == static_cast<ssize_t>(length);
}

bool scan() {
    const Socket socket = open_socket();
    const int family = socket ? genl_ctrl_resolve(socket.get(), NL80211_GENL_NAME) : -1;
    if (family < 0 || !trigger_and_wait(socket.get(), family)) {
        return false;
    }
    const std::size_t heard = dump(socket.get(), family);
    return heard > 0 && write_file("/tmp/bare-listing", heard * listing_of_one) &&
           write_file("/tmp/bare-status", listing_of_one);
}

} // namespace

int main(int argc, char** argv) {
    const int iterations = iterations_of(argc, argv);
    for (int iteration = 0; iteration < iterations; ++iteration) {
        if (!read_readiness() || !scan()) {
            return 1;
        }
        pause_after_iteration();
    }
    return iterations == 0 ? 2 : 0;
}

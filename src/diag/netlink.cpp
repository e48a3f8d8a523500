// SPDX-License-Identifier: Apache-2.0
#include "diag/netlink.hpp"

#include "common/waiting.hpp"

#include <netlink/errno.h>
#include <netlink/genl/genl.h>
#include <netlink/netlink.h>

namespace wivex {

namespace {

constexpr int no_limit = -1;
constexpr std::size_t longest_message = 32768;
constexpr std::int64_t pause_us = 10'000;

// Takes the place of the library's own receive. The pause keeps an error that stays on the socket
// from spinning.
int receive_in_waiting_room(nl_sock* socket, sockaddr_nl* sender, unsigned char** data,
                            ucred** credentials) {
    int result = -NLE_AGAIN;
    while (result == -NLE_AGAIN) {
        wait_readable(nl_socket_get_fd(socket), no_limit);
        result = nl_recv(socket, sender, data, credentials);
        if (result <= 0) {
            wait_for(0, pause_us);
        }
    }
    return result;
}

} // namespace

NetlinkSocket open_generic_netlink() {
    NetlinkSocket socket(nl_socket_alloc());
    if (socket) {
        const NetlinkCallbacks callbacks(nl_socket_get_cb(socket.get()));
        nl_cb_overwrite_recv(callbacks.get(), receive_in_waiting_room);
        genl_connect(socket.get());
        nl_socket_set_nonblocking(socket.get());
        // The kernel never answers with more at once: no need to ask for the length of each part.
        nl_socket_set_msg_buf_size(socket.get(), longest_message);
        nl_socket_disable_msg_peek(socket.get());
    }
    return socket;
}

NetlinkCallbacks make_netlink_callbacks() {
    NetlinkCallbacks callbacks(nl_cb_alloc(NL_CB_DEFAULT));
    if (callbacks) {
        nl_cb_overwrite_recv(callbacks.get(), receive_in_waiting_room);
    }
    return callbacks;
}

} // namespace wivex

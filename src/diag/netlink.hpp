// SPDX-License-Identifier: Apache-2.0
// Netlink objects with owners, and sockets whose waits for the kernel an interrupt can end.
//
// The library waits inside its receive function: for an answer, for the next part of a long one,
// while it resolves a name. Here that function waits in the waiting room instead.
#pragma once

#include <netlink/handlers.h>
#include <netlink/msg.h>
#include <netlink/socket.h>

#include <memory>

namespace wivex {

struct NetlinkReleaser {
    void operator()(nl_sock* socket) const {
        nl_socket_free(socket);
    }
    void operator()(nl_msg* message) const {
        nlmsg_free(message);
    }
    void operator()(nl_cb* callbacks) const {
        nl_cb_put(callbacks);
    }
};

using NetlinkSocket = std::unique_ptr<nl_sock, NetlinkReleaser>;
using NetlinkMessage = std::unique_ptr<nl_msg, NetlinkReleaser>;
using NetlinkCallbacks = std::unique_ptr<nl_cb, NetlinkReleaser>;

/// A generic netlink socket, or null without memory. One that could not be connected is returned
/// all the same: what is sent over it fails.
NetlinkSocket open_generic_netlink();

/// Default callbacks for receives on such a socket, or null without memory.
NetlinkCallbacks make_netlink_callbacks();

} // namespace wivex

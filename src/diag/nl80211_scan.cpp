// SPDX-License-Identifier: Apache-2.0
#include "diag/nl80211_scan.hpp"

#include "common/console.hpp"
#include "common/files.hpp"
#include "common/scan_answer.hpp"
#include "diag/access_points.hpp"
#include "diag/netlink.hpp"
#include "diag/nl80211.hpp"
#include "diag/scan_listing.hpp"

#include <linux/nl80211.h>
#include <net/if.h>
#include <netlink/genl/ctrl.h>
#include <netlink/genl/genl.h>

#include <cerrno>

namespace wivex {

namespace {

// Scans go to this interface, whatever the configuration names.
constexpr const char* scan_interface = "wlan0";

constexpr const char* trigger_command = "NL80211_CMD_TRIGGER_SCAN";
constexpr const char* dump_command = "NL80211_CMD_GET_SCAN";

struct TriggerState {
    /// The number of the request; answers to others are not for us.
    std::uint32_t sequence = 0;
    /// 1 until the kernel has answered the request, then 0 or its error number.
    int err = 1;
    bool done = false;
    bool aborted = false;
};

struct DumpState {
    FileWriter* listing = nullptr;
    std::uint32_t sequence = 0;
    bool ended = false;
};

int scan_trigger_callback(nl_msg* message, void* argument) {
    const int command = command_of(message);
    if (command == NL80211_CMD_SCAN_ABORTED || command == NL80211_CMD_NEW_SCAN_RESULTS) {
        auto& state = *static_cast<TriggerState*>(argument);
        state.done = true;
        state.aborted = command == NL80211_CMD_SCAN_ABORTED;
        print_out("[WIFI]Got %s.\n",
                  state.aborted ? "NL80211_CMD_SCAN_ABORTED" : "NL80211_CMD_NEW_SCAN_RESULTS");
    }
    return NL_SKIP;
}

int error_handler(sockaddr_nl* /*peer*/, nlmsgerr* error, void* argument) {
    auto& state = *static_cast<TriggerState*>(argument);
    if (error->msg.nlmsg_seq != state.sequence) {
        return NL_SKIP;
    }
    print_out("[WIFI]error_handler() called.\n");
    state.err = error->error;
    return NL_STOP;
}

int finish_handler(nl_msg* /*message*/, void* argument) {
    static_cast<TriggerState*>(argument)->err = 0;
    return NL_SKIP;
}

int ack_handler(nl_msg* message, void* argument) {
    auto& state = *static_cast<TriggerState*>(argument);
    if (nlmsg_hdr(message)->nlmsg_seq != state.sequence) {
        return NL_SKIP;
    }
    state.err = 0;
    return NL_STOP;
}

// Multicast messages carry no sequence number of ours.
int no_sequence_check(nl_msg* /*message*/, void* /*argument*/) {
    return NL_OK;
}

int end_of_dump(nl_msg* /*message*/, void* argument) {
    static_cast<DumpState*>(argument)->ended = true;
    return NL_STOP;
}

int take_bss(nl_msg* message, DumpState& state) {
    if (scan_table().full()) {
        print_out("[WIFI]Number of scan APs coming more than %zu\n", scan_table_capacity);
        state.ended = true;
        return NL_STOP;
    }
    BssEntry bss;
    const BssParse parsed = parse_bss(message, bss);
    if (parsed == BssParse::no_bss) {
        print_out("[WIFI]bss info missing!\n");
    } else if (parsed == BssParse::malformed) {
        print_out("[WIFI]failed to parse nested attributes!\n");
    } else if (parsed == BssParse::complete) {
        scan_table().append(list_bss(*state.listing, bss));
    }
    return NL_SKIP;
}

int scan_dump_callback(nl_msg* message, void* argument) {
    auto& state = *static_cast<DumpState*>(argument);
    // A late notification of the scan is no part of the dump.
    if (nlmsg_hdr(message)->nlmsg_seq != state.sequence) {
        return NL_SKIP;
    }
    return take_bss(message, state);
}

bool told_when_missing(const NetlinkCallbacks& callbacks) {
    if (!callbacks) {
        print_out("ERROR: Failed to allocate netlink callbacks.\n");
    }
    return static_cast<bool>(callbacks);
}

bool told_when_too_long(const char* command, bool made) {
    if (!made) {
        print_out("ERROR: %s does not fit into a netlink message.\n", command);
    }
    return made;
}

struct Trigger {
    NetlinkMessage message;
    NetlinkMessage ssids;
    NetlinkCallbacks callbacks;
};

bool allocate(Trigger& trigger) {
    trigger.message.reset(nlmsg_alloc());
    if (!trigger.message) {
        print_out("ERROR: Failed to allocate netlink message for msg.\n");
        return false;
    }
    trigger.ssids.reset(nlmsg_alloc());
    if (!trigger.ssids) {
        print_out("ERROR: Failed to allocate netlink message for ssids_to_scan.\n");
        return false;
    }
    trigger.callbacks = make_netlink_callbacks();
    return told_when_missing(trigger.callbacks);
}

void report_to(TriggerState& state, nl_cb* callbacks) {
    nl_cb_set(callbacks, NL_CB_VALID, NL_CB_CUSTOM, scan_trigger_callback, &state);
    nl_cb_err(callbacks, NL_CB_CUSTOM, error_handler, &state);
    nl_cb_set(callbacks, NL_CB_FINISH, NL_CB_CUSTOM, finish_handler, &state);
    nl_cb_set(callbacks, NL_CB_ACK, NL_CB_CUSTOM, ack_handler, &state);
    nl_cb_set(callbacks, NL_CB_SEQ_CHECK, NL_CB_CUSTOM, no_sequence_check, nullptr);
}

NetlinkCallbacks make_dump_callbacks(DumpState& state) {
    NetlinkCallbacks callbacks = make_netlink_callbacks();
    if (callbacks) {
        nl_cb_set(callbacks.get(), NL_CB_VALID, NL_CB_CUSTOM, scan_dump_callback, &state);
        nl_cb_set(callbacks.get(), NL_CB_FINISH, NL_CB_CUSTOM, end_of_dump, &state);
        nl_cb_set(callbacks.get(), NL_CB_SEQ_CHECK, NL_CB_CUSTOM, no_sequence_check, nullptr);
    }
    return callbacks;
}

void print_sent(const char* command, int sent, const char* function) {
    if (sent < 0) {
        print_out("[WIFI]nl_send_auto_complete failed from %s\n", function);
    } else {
        print_out("[WIFI]%s sent %d bytes to the kernel.\n", command, sent);
    }
}

// Waits for the kernel's answer to the request. Returns the result of the last receive.
int wait_for_answer(nl_sock* socket, nl_cb* callbacks, const TriggerState& state) {
    int result = 0;
    while (state.err > 0 && result >= 0) {
        result = nl_recvmsgs(socket, callbacks);
    }
    return result;
}

int receive_dump(nl_sock* socket, nl_cb* callbacks, const DumpState& state) {
    int result = 0;
    while (!state.ended && result >= 0) {
        result = nl_recvmsgs(socket, callbacks);
    }
    return result;
}

} // namespace

int do_scan_trigger(nl_sock* socket, unsigned interface_index, int family) {
    const int group = genl_ctrl_resolve_grp(socket, "nl80211", "scan");
    const int joined = group < 0 ? group : nl_socket_add_membership(socket, group);
    // The kernel tells the end of a scan to the group only, so without the group no scan is
    // started. A kernel without nl80211 refuses the request by itself.
    if (joined < 0 && family >= 0) {
        return joined;
    }
    Trigger trigger;
    if (!allocate(trigger) ||
        !told_when_too_long(trigger_command,
                            make_scan_trigger(trigger.message.get(), trigger.ssids.get(), family,
                                              interface_index))) {
        return -ENOMEM;
    }
    TriggerState state;
    report_to(state, trigger.callbacks.get());
    const int sent = nl_send_auto_complete(socket, trigger.message.get());
    print_sent(trigger_command, sent, "do_scan_trigger");
    state.sequence = nlmsg_hdr(trigger.message.get())->nlmsg_seq;
    print_out("[WIFI]Waiting for scan to complete...\n");
    const int result = sent < 0 ? sent : wait_for_answer(socket, trigger.callbacks.get(), state);
    if (result < 0) {
        print_out("[WIFI]ERROR: nl_recvmsgs() returned %d (%s).\n", result, nl_geterror(-result));
        return result;
    }
    if (joined < 0) {
        return joined;
    }
    while (!state.done) {
        nl_recvmsgs(socket, trigger.callbacks.get());
    }
    if (state.aborted) {
        print_out("[WIFI]ERROR: Kernel aborted scan.\n");
        return 1;
    }
    print_out("[WIFI]Scan is done.\n");
    nl_socket_drop_membership(socket, group);
    return 0;
}

int dump_scan(nl_sock* socket, unsigned interface_index, int family, FileWriter& listing) {
    const NetlinkMessage message(nlmsg_alloc());
    if (!message) {
        print_out("[WIFI]nlmsg_alloc failed\n");
        return scan_answer::scan_failed;
    }
    DumpState state;
    state.listing = &listing;
    const NetlinkCallbacks callbacks = make_dump_callbacks(state);
    if (!told_when_missing(callbacks) ||
        !told_when_too_long(dump_command, make_scan_dump(message.get(), family, interface_index))) {
        return scan_answer::scan_failed;
    }
    const int sent = nl_send_auto_complete(socket, message.get());
    print_sent(dump_command, sent, "execute_scan_nl_command");
    if (sent < 0) {
        return scan_answer::scan_failed;
    }
    state.sequence = nlmsg_hdr(message.get())->nlmsg_seq;
    const int result = receive_dump(socket, callbacks.get(), state);
    if (result < 0) {
        print_out("ERROR: nl_recvmsgs_default() returned %d (%s).\n", result, nl_geterror(-result));
        return scan_answer::scan_failed;
    }
    return scan_answer::succeeded;
}

int execute_scan_nl_command() {
    const unsigned interface_index = if_nametoindex(scan_interface);
    // One socket a scan: nothing that an earlier scan left behind can disturb this one.
    const NetlinkSocket socket = open_generic_netlink();
    if (!socket) {
        print_out("[WIFI]Failed to allocate netlink socket.\n");
        return scan_answer::scan_failed;
    }
    const int family = genl_ctrl_resolve(socket.get(), "nl80211");
    if (const int result = do_scan_trigger(socket.get(), interface_index, family)) {
        print_out("[WIFI]do_scan_trigger() failed with %d.\n", result);
        return scan_answer::scan_failed;
    }
    FileWriter listing(open_to_write(scan_listing, Links::refuse));
    if (!listing) {
        print_error("[WIFI]\"/tmp/output\"File open error", errno);
        return scan_answer::scan_failed;
    }
    if (dump_scan(socket.get(), interface_index, family, listing) != scan_answer::succeeded) {
        return scan_answer::scan_failed;
    }
    // An incomplete listing must not pass for a shielded room.
    if (const int error = listing.close()) {
        print_error("[WIFI]\"/tmp/output\"File write error", error);
        return scan_answer::scan_failed;
    }
    return scan_answer::succeeded;
}

} // namespace wivex

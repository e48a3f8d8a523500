// SPDX-License-Identifier: Apache-2.0
#include "ops/p2p.hpp"

#include "common/buffers.hpp"
#include "common/console.hpp"
#include "common/deadline_timer.hpp"
#include "common/process_state.hpp"
#include "ctrl/event_wait.hpp"

#include <array>
#include <string_view>

namespace wivex {

namespace {

constexpr int succeeded = 0;
constexpr int failed = -1;
constexpr int find_timeout_seconds = 60;
constexpr std::size_t longest_event_line = REPLY_BUFFER_SIZE - 1;

// The style without blanks: the command runs into the words on both sides.
void print_sent(const std::string& command, const Reply& reply) {
    print_out("Sent%scommand to wpa_supplicant:%s\n", command.c_str(), reply.c_str());
}

void print_sent_spaced(const std::string& command, const Reply& reply) {
    print_out("Sent %s command to wpa_supplicant:%s\n", command.c_str(), reply.c_str());
}

// A command with the plain success line, and a failure line that names `verb` without a newline.
int send_plain(SupplicantSession& session, const std::string& command, const char* verb,
               Reply reply) {
    if (session.isInvalid()) {
        return failed;
    }
    if (!session.sendCommand(command, reply.cleared())) {
        print_out("Failed to send %s command to wpa_supplicant", verb);
        return failed;
    }
    print_sent(command, reply);
    return succeeded;
}

bool peer_given(const char* peer) {
    if (peer == nullptr) {
        print_out("Peer address is NULL!!");
        return false;
    }
    return true;
}

// Of the replies to these operations only a short answer counts.
using ShortReplyBuffer = std::array<char, 10>;

ErrorCode search(SupplicantSession& session, const char* name) {
    ShortReplyBuffer buffer{};
    const Reply reply(buffer);
    p2pFlush(session, reply);
    if (p2pFind(session, reply, nullptr) == failed) {
        print_out("%s fail\n", name);
        return error_code::p2p_find_failed;
    }
    return error_code::passed;
}

} // namespace

int parseP2pEvent(const char* message, const char* peer) {
    if (peer == nullptr) {
        return 0;
    }
    if (run_options.debug != 0) {
        print_out("In parse event : Device %s line:%s.\n\n", peer, message);
    }
    std::string_view rest(message);
    while (!rest.empty()) {
        // One character is dropped before each line; events begin with a priority in brackets.
        rest.remove_prefix(1);
        const std::string_view line = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(line.size() < rest.size() ? line.size() + 1 : line.size());
        if (line.substr(0, longest_event_line).find(peer) != std::string_view::npos) {
            print_out("MATCH FOUND!!!%s\n", peer);
            return 1;
        }
    }
    return 0;
}

int p2pFlush(SupplicantSession& session, Reply reply) {
    return send_plain(session, "P2P_FLUSH", "P2P_FLUSH", reply);
}

int p2pFind(SupplicantSession& session, Reply reply, const char* peer) {
    if (session.isInvalid()) {
        return failed;
    }
    const std::string command = "P2P_FIND";
    if (!session.sendCommand(command, reply.cleared())) {
        print_out("Failed to send P2P_FIND command to wpa_supplicant%s\n", reply.c_str());
        return failed;
    }
    if (!reply.contains("OK")) {
        print_out("FAILED:P2P_FIND\n");
        return failed;
    }
    print_out("SUCCESS:P2P_FIND\n");
    print_sent_spaced(command, reply);
    DeadlineTimer timer;
    timer.start(find_timeout_seconds);
    if (!await_event(session, timer, "P2P-DEVICE-FOUND", parseP2pEvent, peer)) {
        print_out("P2P FIND: TIME OUT !!\n");
        return failed;
    }
    return succeeded;
}

int p2pStopFind(SupplicantSession& session, Reply reply) {
    return send_plain(session, "P2P_STOP_FIND", "P2P_STOP_FIND", reply);
}

int p2pConnectJoin(SupplicantSession& session, const char* peer, const char* method, Reply reply) {
    if (session.isInvalid() || !peer_given(peer)) {
        return failed;
    }
    const std::string command =
        std::string("P2P_CONNECT ") + peer + " " + method + " join persistent";
    print_out("%s\n", command.c_str());
    return send_plain(session, command, "P2P_CONNECT", reply);
}

int p2pConnectPbc(SupplicantSession& session, const char* peer, const char* /*method*/,
                  const std::string& go_intent, Reply reply) {
    if (session.isInvalid() || !peer_given(peer)) {
        return failed;
    }
    // Two blanks before go_intent: kept.
    const std::string command =
        std::string("P2P_CONNECT ") + peer + " pbc " + " go_intent=" + go_intent;
    print_out("%s\n", command.c_str());
    const bool accepted = session.sendCommand(command, reply.cleared());
    print_out("%s\n", reply.c_str());
    if (!accepted) {
        print_out("Failed to send P2P_CONNECT command to wpa_supplicant\n");
        return failed;
    }
    print_sent_spaced(command, reply);
    return succeeded;
}

int p2pGroupAdd(SupplicantSession& session, Reply reply) {
    return send_plain(session, "P2P_GROUP_ADD", "P2P_GROUP_ADD", reply);
}

int p2pGroupAddSecured(SupplicantSession& session, const std::string& ssid,
                       const std::string& passphrase, Reply reply) {
    return send_plain(session, "P2P_GROUP_ADD ssid=" + ssid + " passphrase=" + passphrase,
                      "P2P_GROUP_ADD", reply);
}

int p2pGroupAddOnChannel(SupplicantSession& session, const std::string& ssid,
                         const std::string& passphrase, int frequency, Reply reply) {
    return send_plain(session,
                      "P2P_GROUP_ADD ssid=" + ssid + " passphrase=" + passphrase +
                          " freq=" + std::to_string(frequency),
                      "P2P_GROUP_ADD", reply);
}

int p2pGroupRemove(SupplicantSession& session, const std::string& interface, Reply reply) {
    if (session.isInvalid()) {
        return failed;
    }
    const std::string command = "P2P_GROUP_REMOVE " + interface;
    if (!session.sendCommand(command, reply.cleared())) {
        print_out("Failed to send P2P_GROUP_REMOVE command to wpa_supplicant");
        return failed;
    }
    print_out("Sent %scommand to wpa_supplicant:\n", command.c_str());
    if (run_options.debug != 0) {
        print_out("%s\n", reply.c_str());
    }
    return succeeded;
}

ErrorCode search_device_P2P(SupplicantSession& session) {
    return search(session, "search_device_P2P");
}

ErrorCode stop_search_device_P2P(SupplicantSession& session) {
    return search(session, "stop_search_device_P2P");
}

ErrorCode listen_device_P2P(SupplicantSession& session) {
    if (session.isInvalid()) {
        return failed;
    }
    ShortReplyBuffer buffer{};
    Reply reply(buffer);
    p2pFlush(session, reply);
    const std::string command = "P2P_LISTEN";
    if (!session.sendCommand(command, reply.cleared())) {
        print_out("listen_device_P2P fail\n");
    }
    if (!reply.contains("OK")) {
        print_out("FAILED:P2P_LISTEN\n");
        return error_code::p2p_listen_failed;
    }
    print_out("SUCCESS:P2P_LISTEN\n");
    print_sent(command, reply);
    return succeeded;
}

} // namespace wivex

// SPDX-License-Identifier: Apache-2.0
#include "ops/p2p.hpp"

#include "common/buffers.hpp"
#include "common/console.hpp"
#include "common/deadline_timer.hpp"
#include "common/process_state.hpp"
#include "common/text.hpp"
#include "ctrl/event_wait.hpp"

#include <array>
#include <cstring>
#include <string_view>

namespace wivex {

namespace {

constexpr int succeeded = 0;
constexpr int failed = -1;
constexpr int find_timeout_seconds = 60;

bool send(SupplicantSession& session, const std::string& command, char* reply,
          std::size_t capacity) {
    std::memset(reply, 0, capacity + 1);
    return session.sendCommand(command, reply, capacity);
}

// The style without blanks: the command runs into the words on both sides.
void print_sent(const std::string& command, const char* reply) {
    print_out("Sent%scommand to wpa_supplicant:%s\n", command.c_str(), reply);
}

void print_sent_spaced(const std::string& command, const char* reply) {
    print_out("Sent %s command to wpa_supplicant:%s\n", command.c_str(), reply);
}

// A command with the plain success line, and a failure line that names `verb` without a newline.
int send_plain(SupplicantSession& session, const std::string& command, const char* verb,
               char* reply, std::size_t capacity) {
    if (session.isInvalid()) {
        return failed;
    }
    if (!send(session, command, reply, capacity)) {
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

// A reply of the operations that look only for a short answer.
struct ShortReply {
    std::array<char, 10> text{};

    char* data() {
        return text.data();
    }
    std::size_t capacity() const {
        return text.size() - 1;
    }
};

ErrorCode search(SupplicantSession& session, const char* name) {
    ShortReply reply;
    p2pFlush(session, reply.data(), reply.capacity());
    if (p2pFind(session, reply.data(), reply.capacity(), nullptr) == failed) {
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
        if (line.substr(0, reply_capacity).find(peer) != std::string_view::npos) {
            print_out("MATCH FOUND!!!%s\n", peer);
            return 1;
        }
    }
    return 0;
}

int p2pFlush(SupplicantSession& session, char* reply, std::size_t capacity) {
    return send_plain(session, "P2P_FLUSH", "P2P_FLUSH", reply, capacity);
}

int p2pFind(SupplicantSession& session, char* reply, std::size_t capacity, const char* peer) {
    if (session.isInvalid()) {
        return failed;
    }
    const std::string command = "P2P_FIND";
    if (!send(session, command, reply, capacity)) {
        print_out("Failed to send P2P_FIND command to wpa_supplicant%s\n", reply);
        return failed;
    }
    if (!contains(reply, "OK")) {
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

int p2pStopFind(SupplicantSession& session, char* reply, std::size_t capacity) {
    return send_plain(session, "P2P_STOP_FIND", "P2P_STOP_FIND", reply, capacity);
}

int p2pConnectJoin(SupplicantSession& session, const char* peer, const char* method, char* reply,
                   std::size_t capacity) {
    if (session.isInvalid() || !peer_given(peer)) {
        return failed;
    }
    const std::string command =
        std::string("P2P_CONNECT ") + peer + " " + method + " join persistent";
    print_out("%s\n", command.c_str());
    return send_plain(session, command, "P2P_CONNECT", reply, capacity);
}

int p2pConnectPbc(SupplicantSession& session, const char* peer, const char* /*method*/,
                  const std::string& go_intent, char* reply, std::size_t capacity) {
    if (session.isInvalid() || !peer_given(peer)) {
        return failed;
    }
    // Two blanks before go_intent: kept.
    const std::string command =
        std::string("P2P_CONNECT ") + peer + " pbc " + " go_intent=" + go_intent;
    print_out("%s\n", command.c_str());
    const bool accepted = send(session, command, reply, capacity);
    print_out("%s\n", reply);
    if (!accepted) {
        print_out("Failed to send P2P_CONNECT command to wpa_supplicant\n");
        return failed;
    }
    print_sent_spaced(command, reply);
    return succeeded;
}

int p2pGroupAdd(SupplicantSession& session, char* reply, std::size_t capacity) {
    return send_plain(session, "P2P_GROUP_ADD", "P2P_GROUP_ADD", reply, capacity);
}

int p2pGroupAddSecured(SupplicantSession& session, const std::string& ssid,
                       const std::string& passphrase, char* reply, std::size_t capacity) {
    return send_plain(session, "P2P_GROUP_ADD ssid=" + ssid + " passphrase=" + passphrase,
                      "P2P_GROUP_ADD", reply, capacity);
}

int p2pGroupAddOnChannel(SupplicantSession& session, const std::string& ssid,
                         const std::string& passphrase, int frequency, char* reply,
                         std::size_t capacity) {
    return send_plain(session,
                      "P2P_GROUP_ADD ssid=" + ssid + " passphrase=" + passphrase +
                          " freq=" + std::to_string(frequency),
                      "P2P_GROUP_ADD", reply, capacity);
}

int p2pGroupRemove(SupplicantSession& session, const std::string& interface, char* reply,
                   std::size_t capacity) {
    if (session.isInvalid()) {
        return failed;
    }
    const std::string command = "P2P_GROUP_REMOVE " + interface;
    if (!send(session, command, reply, capacity)) {
        print_out("Failed to send P2P_GROUP_REMOVE command to wpa_supplicant");
        return failed;
    }
    print_out("Sent %scommand to wpa_supplicant:\n", command.c_str());
    if (run_options.debug != 0) {
        print_out("%s\n", reply);
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
    ShortReply reply;
    p2pFlush(session, reply.data(), reply.capacity());
    const std::string command = "P2P_LISTEN";
    if (!send(session, command, reply.data(), reply.capacity())) {
        print_out("listen_device_P2P fail\n");
    }
    if (!contains(reply.data(), "OK")) {
        print_out("FAILED:P2P_LISTEN\n");
        return error_code::p2p_listen_failed;
    }
    print_out("SUCCESS:P2P_LISTEN\n");
    print_sent(command, reply.data());
    return succeeded;
}

} // namespace wivex

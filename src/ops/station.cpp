// SPDX-License-Identifier: Apache-2.0
#include "ops/station.hpp"

#include "common/buffers.hpp"
#include "common/console.hpp"
#include "common/process_state.hpp"
#include "common/text.hpp"
#include "ctrl/event_wait.hpp"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace wivex {

namespace {

constexpr int event_timeout_seconds = 30;
constexpr int busy_replies_tolerated = 2;
constexpr std::size_t longest_listing_line = 511;
constexpr std::size_t longest_tail = 510;

bool is_open(const SupplicantSession& session) {
    if (session.isInvalid()) {
        print_err("Sockets are not opened\n");
        return false;
    }
    return true;
}

// Sends a command of whose reply only the verdict counts.
bool send(SupplicantSession& session, const char* command) {
    ReplyBuffer buffer{};
    Reply reply(buffer);
    return session.sendCommand(command, reply);
}

void take_proto(std::string_view line, std::string& proto) {
    if (contains(line, "[WPA2-") && contains(line, "[WPA-")) {
        proto = "WPA2";
    } else if (contains(line, "[WPA2")) {
        proto = "RSN";
    } else if (contains(line, "[WPA")) {
        proto = "WPA";
    }
}

void take_key_mgmt(std::string_view line, std::string& key_mgmt) {
    if (contains(line, "[WPA-PSK") || contains(line, "[WPA2-PSK")) {
        key_mgmt = "WPA-PSK";
    } else if (contains(line, "[WPA-EAP") || contains(line, "WPA2-EAP")) {
        // Without the bracket: kept.
        key_mgmt = "WPA-EAP";
    } else if (contains(line, "[WPA-") || contains(line, "[WPA2-")) {
        key_mgmt = "WPA-NONE";
    }
}

void take_pairwise(std::string_view line, std::string& pairwise) {
    const bool ccmp = contains(line, "CCMP");
    const bool tkip = contains(line, "TKIP");
    if (ccmp && tkip) {
        pairwise = "CCMP TKIP";
    } else if (ccmp) {
        pairwise = "CCMP";
    } else if (tkip) {
        pairwise = "TKIP";
    } else {
        pairwise = "NONE";
    }
}

void take_security(std::string_view line, RunConfig& config) {
    take_proto(line, config.scan_proto);
    take_key_mgmt(line, config.scan_key_mgmt);
    take_pairwise(line, config.scan_pairwise);
}

// Takes the next line off the listing, cut to what a line may hold. A zero byte ends its text, not
// the listing.
std::string_view next_line(std::string_view& listing) {
    const std::string_view line = listing.substr(0, listing.find('\n'));
    listing.remove_prefix(line.size() < listing.size() ? line.size() + 1 : listing.size());
    return line.substr(0, std::min(line.find('\0'), longest_listing_line));
}

// The listing with the zero bytes behind it, which are one more line when they fit into one. Kept.
std::string_view with_fitting_tail(std::string_view buffer) {
    const std::size_t length = buffer.find_last_not_of('\0') + 1;
    return buffer.size() - length > longest_tail ? buffer.substr(0, length) : buffer;
}

struct NetworkField {
    const char* name;
    std::string_view value;
    bool quoted;
    const char* format_failure;
    const char* refusal;
};

// The id has a blank behind it: kept.
bool format_network_command(CommandBuffer& command, const char* name, int id, const char* end) {
    const bool made = std::snprintf(command.data(), command.size(), "%s %d ", name, id) >= 0;
    if (!made) {
        print_err("Fail to Create Command %s %d%s", name, id, end);
    }
    return made;
}

bool set_field(SupplicantSession& session, int id, const NetworkField& field) {
    CommandBuffer command{};
    const char* const quote = field.quoted ? "\"" : "";
    const int length =
        std::snprintf(command.data(), command.size(), "SET_NETWORK %d %s %s%.*s%s", id, field.name,
                      quote, static_cast<int>(field.value.size()), field.value.data(), quote);
    const bool accepted = length >= 0 && send(session, command.data());
    if (length < 0) {
        print_err("%s%d %s %.*s", field.format_failure, id, field.name,
                  static_cast<int>(field.value.size()), field.value.data());
    } else if (!accepted) {
        print_err("%s", field.refusal);
    }
    return accepted;
}

} // namespace

ErrorCode cmd_to_scan(SupplicantSession& session) {
    if (!is_open(session)) {
        return error_code::session_not_open;
    }
    ReplyBuffer buffer{};
    Reply reply(buffer);
    int busy_replies = 0;
    while (!session.sendCommand("SCAN", reply.cleared())) {
        if (reply.contains("FAIL-BUSY")) {
            ++busy_replies;
            continue;
        }
        if (busy_replies > busy_replies_tolerated) {
            print_err("Scan returning FAIL-BUSY");
            return error_code::scan_busy;
        }
        print_err("Scan Command not successful\n");
        return error_code::scan_rejected;
    }
    await_event_forever(session, "CTRL-EVENT-SCAN-RESULTS");
    if (session.isInvalid()) {
        print_err("scan event receive failure\n");
        return error_code::session_not_open;
    }
    return error_code::passed;
}

bool cmd_to_scan_results(SupplicantSession& session, std::string& listing) {
    if (session.isInvalid()) {
        return false;
    }
    ReplyBuffer buffer{};
    Reply reply(buffer);
    if (!session.sendCommand("SCAN_RESULTS", reply) || !reply.contains("bssid")) {
        print_err("scan_results Command not successful\n");
        return false;
    }
    listing.append(buffer.data(), buffer.size());
    return true;
}

int cmd_to_find_network(SupplicantSession& session, RunConfig& config) {
    if (!is_open(session)) {
        return error_code::session_not_open;
    }
    std::string reply;
    cmd_to_scan_results(session, reply);
    std::string_view listing = with_fitting_tail(reply);
    bool found = false;
    while (!listing.empty()) {
        const std::string_view line = next_line(listing);
        if (run_options.debug != 0) {
            print_out("%.*s\n", static_cast<int>(line.size()), line.data());
        }
        if (!config.go_ssid.empty() && contains(line, config.go_ssid)) {
            found = true;
            take_security(line, config);
        }
    }
    print_out("%s%s\n", config.go_ssid.c_str(), found ? "is found..." : "is not found!!!");
    return found ? 0 : 1;
}

int cmd_to_addnetwork(SupplicantSession& session) {
    if (!is_open(session)) {
        return error_code::session_not_open;
    }
    CommandBuffer command{};
    if (std::snprintf(command.data(), command.size(), "%s", "REMOVE_NETWORK all") < 0) {
        print_err("Fail to Create Command REMOVE_NETWORK!!!\n");
        return error_code::remove_network_not_formatted;
    }
    if (!send(session, command.data())) {
        print_err("REMOVE_NETWORK Command is  not successful\n");
    }
    ReplyBuffer buffer{};
    Reply reply(buffer);
    if (!session.sendCommand("ADD_NETWORK", reply)) {
        print_err("ADD_NETWORK Command not successful\n");
        return error_code::add_network_failed;
    }
    // A bare "0" is a failure, any other answer is network 0: kept. The supplicant answers "0\n"
    // after "REMOVE_NETWORK all".
    if (std::string_view(reply.c_str()) != "0") {
        return 0;
    }
    print_err("Fail to receive Network Id\n");
    return error_code::add_network_failed;
}

ErrorCode cmd_to_setnetwork(SupplicantSession& session, const RunConfig& config, int id) {
    if (!is_open(session)) {
        return error_code::session_not_open;
    }
    constexpr const char* spaced = "Fail to Create Command SET_NETWORK ";
    constexpr const char* unspaced = "Fail to Create Command SET_NETWORK";
    // The pass phrase is set for an open network too: kept.
    const std::array<NetworkField, 6> fields{{
        {"ssid", config.go_ssid, true, spaced, "SET_NETWORK Command for ssid is  not successful\n"},
        {"auth_alg", "OPEN", false, spaced, "SET_NETWORK Command for auth_alg is not successful\n"},
        {"proto", config.scan_proto, false, spaced,
         "SET_NETWORK Command for proto is not successful\n"},
        {"key_mgmt", config.scan_key_mgmt, false, unspaced,
         "SET_NETWORK Command for key_mgmt is not successful\n"},
        {"pairwise", config.scan_pairwise, false, unspaced,
         "SET_NETWORK Command for pairwise is not successful\n"},
        {"psk", config.go_passphrase, true, unspaced,
         "SET_NETWORK Command for psk is not successful\n"},
    }};
    for (const NetworkField& field : fields) {
        if (!set_field(session, id, field)) {
            return error_code::set_network_failed;
        }
    }
    return error_code::passed;
}

ErrorCode cmd_to_selectnetwork(SupplicantSession& session, int id) {
    if (!is_open(session)) {
        return error_code::session_not_open;
    }
    CommandBuffer command{};
    if (!format_network_command(command, "SELECT_NETWORK", id, "")) {
        return error_code::select_network_failed;
    }
    if (!send(session, command.data())) {
        print_err("SELECT_NETWORK Command is  not successful\n");
        return error_code::select_network_failed;
    }
    if (!await_event_in_time(session, event_timeout_seconds, "CTRL-EVENT-CONNECTED")) {
        print_err("Unable to Connect Time out!!!\n");
        return error_code::select_network_failed;
    }
    return error_code::passed;
}

ErrorCode cmd_to_disablenetwork(SupplicantSession& session, int id) {
    if (!is_open(session)) {
        return error_code::session_not_open;
    }
    CommandBuffer command{};
    if (!format_network_command(command, "DISABLE_NETWORK", id, "\n")) {
        return error_code::select_network_failed;
    }
    print_out("%s\n", command.data());
    if (!send(session, command.data())) {
        print_err("DISABLE_NETWORK Command is  not successful\n");
        return error_code::disable_network_failed;
    }
    if (!await_event_in_time(session, event_timeout_seconds, "CTRL-EVENT-DISCONNECTED")) {
        print_err("Timeout waiting for CTRL-EVENT-DISCONNECTED event\n");
        return error_code::disconnect_timeout;
    }
    return error_code::passed;
}

} // namespace wivex

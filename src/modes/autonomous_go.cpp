// SPDX-License-Identifier: Apache-2.0
#include "modes/autonomous_go.hpp"

#include "common/buffers.hpp"
#include "common/console.hpp"
#include "common/process_state.hpp"
#include "common/waiting.hpp"
#include "ctrl/event_wait.hpp"
#include "ctrl/supplicant_session.hpp"
#include "modes/addressing.hpp"
#include "modes/session_setup.hpp"
#include "ops/host_tools.hpp"
#include "ops/p2p.hpp"

#include <array>
#include <string>

namespace wivex {

namespace {

constexpr int group_started_timeout_seconds = 30;
constexpr int station_timeout_seconds = 30;

// Deliberately small: kept.
constexpr std::size_t small_reply_capacity = 32;

void print_status_of_interfaces(SupplicantSession& session, const RunConfig& config) {
    ReplyBuffer buffer{};
    Reply reply(buffer);
    if (session.checkWlanStatus(config, reply)) {
        print_out("wlan0 status %s\n", reply.c_str());
    }
    if (session.checkP2pStatus(config, reply)) {
        print_out("p2p0 status %s\n", reply.c_str());
    }
}

bool start_group(SupplicantSession& session, const RunConfig& config, Reply& reply) {
    const std::string command =
        "P2P_GROUP_ADD ssid=" + config.go_ssid + " passphrase=" + config.go_passphrase;
    if (!session.sendCommand(command, reply)) {
        print_err("unable to start p2p group %s \n", config.go_ssid.c_str());
        return false;
    }
    if (run_options.debug != 0) {
        print_out("%s%s\n", command.c_str(), reply.c_str());
    }
    if (!await_event_in_time(session, group_started_timeout_seconds, "P2P-GROUP-STARTED")) {
        print_err("Unable to get P2P-GROUP-STARTED event.Possible reason P2P group not started\n");
        return false;
    }
    print_out("P2P group started %s \n", config.go_ssid.c_str());
    return true;
}

// Only "yes" in lower case starts the server: kept.
ErrorCode start_traffic_server(const RunConfig& config) {
    if (config.check_iperf == "yes" && !cmd_to_start_iperf_server(config)) {
        print_err("Unable to start iperf server.\n");
        return error_code::iperf_server_failed;
    }
    return error_code::passed;
}

bool station_connects(SupplicantSession& session) {
    return await_event_in_time(session, station_timeout_seconds, "AP-STA-CONNECTED");
}

// Serves one push-button request; `client_count` counts the stations that connected.
void serve_request(SupplicantSession& session, const RunConfig& config, Reply reply,
                   int& client_count) {
    await_event_forever(session, "P2P-PROV-DISC-PBC-REQ");
    if (!session.sendCommand("WPS_PBC", reply)) {
        print_err("unable to send   WPS_PBC \n");
        return;
    }
    if (station_connects(session)) {
        ++client_count;
        print_out("Client connected %d.\n", client_count);
        return;
    }
    print_err("Client not able to connect...continuing \n");
    // The loop goes on waiting for requests although the group is gone, and the room for this reply
    // is the length of the last one: kept.
    p2pGroupRemove(session, config.interface_name, reply.limited_to(reply.length()));
    wait_for(1);
}

} // namespace

ErrorCode autonomous_go_test(RunConfig& config) {
    SupplicantSession session(config);
    if (!session_created(session)) {
        return error_code::session_not_open;
    }
    if (run_options.debug != 0) {
        print_status_of_interfaces(session, config);
    }
    std::array<char, small_reply_capacity + 1> buffer{};
    Reply reply(buffer);
    p2pGroupRemove(session, config.interface_name, reply);
    if (!start_group(session, config, reply)) {
        return error_code::group_not_started;
    }
    if (const ErrorCode failure = serve_addresses(config)) {
        return failure;
    }
    if (const ErrorCode failure = start_traffic_server(config)) {
        return failure;
    }
    int client_count = 0;
    while (session_open_or_reopened(session, config)) {
        serve_request(session, config, reply, client_count);
    }
    return error_code::session_lost;
}

} // namespace wivex

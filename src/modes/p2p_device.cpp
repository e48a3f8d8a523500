// SPDX-License-Identifier: Apache-2.0
#include "modes/p2p_device.hpp"

#include "common/buffers.hpp"
#include "common/console.hpp"
#include "common/deadline_timer.hpp"
#include "common/process_state.hpp"
#include "common/waiting.hpp"
#include "ctrl/event_wait.hpp"
#include "ctrl/supplicant_session.hpp"
#include "modes/addressing.hpp"
#include "modes/session_setup.hpp"
#include "ops/p2p.hpp"

#include <array>
#include <cstdlib>
#include <string>

namespace wivex {

namespace {

constexpr int group_started_timeout_seconds = 30;
constexpr int owner_pause_seconds = 30;
constexpr int settle_seconds = 2;
constexpr std::size_t go_intent_length = 2;
constexpr const char* method = "pbc";

// Index into the candidates; negative when no group was announced.
enum Role : int { client = 0, owner = 1 };
constexpr std::array<const char*, 2> role_candidates{"client", "GO"};

// The seed is fixed: kept. Every run waits equally long.
int negotiation_wait_seconds(const RunConfig& config) {
    unsigned seed = 1000;
    constexpr int longest_extra_wait = 15;
    return std::atoi(config.starting_go_intent.c_str()) + rand_r(&seed) % longest_extra_wait;
}

void clear_old_group(SupplicantSession& session, const RunConfig& config, Reply reply) {
    p2pGroupRemove(session, config.interface_name, reply);
    wait_for(settle_seconds);
    print_out("\n---------------------------------------------------\n");
}

void wait_for_negotiation_request(SupplicantSession& session, const RunConfig& config) {
    const char* const peer = config.p2p_target_device_mac.c_str();
    const int seconds = negotiation_wait_seconds(config);
    print_out("%d seconds waiting for go negotiation request from %s.\n", seconds, peer);
    if (!await_event_in_time(session, seconds, "P2P-GO-NEG-REQUEST", parseP2pEvent, peer)) {
        print_out("Didnot receive a P2P-GO-NEG-REQUEST.Sending a connect request.\n");
    }
}

int wait_for_role(SupplicantSession& session) {
    DeadlineTimer timer;
    timer.start(group_started_timeout_seconds);
    return await_event_any(session, timer, "P2P-GROUP-STARTED", parseP2pEvent, role_candidates);
}

// Gives the peer time to take its address, then ends the group.
ErrorCode serve_as_owner(SupplicantSession& session, const RunConfig& config, Reply reply) {
    print_out("GO\n");
    if (const ErrorCode failure = serve_addresses(config)) {
        return failure;
    }
    DeadlineTimer timer;
    timer.start(owner_pause_seconds);
    wait_until_expired(timer);
    p2pGroupRemove(session, config.interface_name, reply);
    wait_for(settle_seconds);
    return error_code::passed;
}

// The peer ends the group, whenever that is.
ErrorCode join_as_client(SupplicantSession& session, const RunConfig& config) {
    print_out("client\n");
    if (const ErrorCode failure = take_address(config)) {
        return failure;
    }
    print_out("Waiting for P2P-GROUP-REMOVED event from peer.\n");
    await_event_forever(session, "P2P-GROUP-REMOVED");
    return error_code::passed;
}

ErrorCode act_in_role(SupplicantSession& session, const RunConfig& config, int role, Reply reply) {
    if (role == owner) {
        return serve_as_owner(session, config, reply);
    }
    if (role == client) {
        return join_as_client(session, config);
    }
    print_err("Unable to recieve P2P-GROUP-STARTED event.\n");
    return error_code::group_not_started;
}

} // namespace

ErrorCode p2p_device_test(RunConfig& config) {
    const char* const peer = config.p2p_target_device_mac.c_str();
    const std::string go_intent = config.starting_go_intent.substr(0, go_intent_length);
    ReplyBuffer buffer{};
    const Reply reply(buffer);

    SupplicantSession session(config);
    if (!session_created(session)) {
        return error_code::session_not_open;
    }
    if (!peer_configured(config)) {
        return error_code::peer_not_configured;
    }
    if (!session_open_or_reopened(session, config)) {
        return error_code::session_lost;
    }
    clear_old_group(session, config, reply);
    if (p2pFind(session, reply, peer) != 0) {
        print_out("P2P FIND Fail \n");
        return error_code::p2p_find_failed;
    }
    wait_for_negotiation_request(session, config);
    if (p2pConnectPbc(session, peer, method, go_intent, reply) != 0) {
        print_out("connect:TEST CASE FAIL\n");
        return error_code::p2p_connect_failed;
    }
    const int role = wait_for_role(session);
    if (const ErrorCode failure = act_in_role(session, config, role, reply)) {
        return failure;
    }
    wait_for(run_options.iteration_interval);
    return error_code::passed;
}

} // namespace wivex

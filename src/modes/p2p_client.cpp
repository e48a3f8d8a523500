// SPDX-License-Identifier: Apache-2.0
#include "modes/p2p_client.hpp"

#include "common/buffers.hpp"
#include "common/console.hpp"
#include "common/process_state.hpp"
#include "common/waiting.hpp"
#include "ctrl/event_wait.hpp"
#include "ctrl/supplicant_session.hpp"
#include "modes/addressing.hpp"
#include "modes/session_setup.hpp"
#include "modes/traffic.hpp"
#include "ops/p2p.hpp"

#include <array>

namespace wivex {

namespace {

constexpr int connected_timeout_seconds = 60;
constexpr std::size_t removal_reply_capacity = 4096;
constexpr const char* method = "pbc";

using LargeReplyBuffer = std::array<char, removal_reply_capacity + 1>;

bool connect(SupplicantSession& session, const RunConfig& config, Reply reply) {
    if (p2pConnectJoin(session, config.p2p_target_device_mac.c_str(), method, reply) != 0) {
        return false;
    }
    return await_event_in_time(session, connected_timeout_seconds, "CTRL-EVENT-CONNECTED");
}

ErrorCode join_group(SupplicantSession& session, const RunConfig& config, Reply reply) {
    if (connect(session, config, reply)) {
        print_out("client Connected...\n");
        return error_code::passed;
    }
    print_out("CONNECT:TEST CASE FAIL\n");
    p2pGroupRemove(session, config.interface_name, reply);
    return error_code::p2p_connect_failed;
}

ErrorCode leave_group(SupplicantSession& session, const RunConfig& config) {
    LargeReplyBuffer buffer{};
    const Reply reply(buffer);
    if (p2pGroupRemove(session, config.interface_name, reply) != 0) {
        print_out("disconnect:TEST CASE FAIL\n");
        return error_code::group_removal_failed;
    }
    print_out("Waiting for P2P-GROUP-REMOVED event from peer.\n");
    await_event_forever(session, "P2P-GROUP-REMOVED");
    return error_code::passed;
}

} // namespace

ErrorCode p2p_client_test(RunConfig& config) {
    ReplyBuffer buffer{};
    Reply reply(buffer);

    SupplicantSession session(config);
    if (!session_created(session)) {
        return error_code::session_not_open;
    }
    if (!peer_configured(config)) {
        return error_code::peer_not_configured;
    }
    session.checkWlanStatus(config, reply);
    if (!session_open_or_reopened(session, config)) {
        return error_code::session_lost;
    }
    p2pGroupRemove(session, config.interface_name, reply);
    if (p2pFind(session, reply, config.p2p_target_device_mac.c_str()) != 0) {
        print_out("P2P FIND FAIL \n");
        return error_code::p2p_find_failed;
    }
    if (const ErrorCode failure = join_group(session, config, reply)) {
        return failure;
    }
    if (const ErrorCode failure = take_address(config)) {
        return failure;
    }
    if (const ErrorCode failure = measure_traffic(config)) {
        return failure;
    }
    if (const ErrorCode failure = leave_group(session, config)) {
        return failure;
    }
    wait_for(run_options.iteration_interval);
    return error_code::passed;
}

} // namespace wivex

// SPDX-License-Identifier: Apache-2.0
// Replies to commands: the first byte chooses the operation, the rest is the supplicant's answer.

#include "common/buffers.hpp"
#include "common/process_state.hpp"
#include "fuzz_session.hpp"
#include "ops/p2p.hpp"
#include "ops/station.hpp"

#include <cstdint>
#include <string_view>

namespace {

void run_operation(unsigned choice, wivex::SupplicantSession& session) {
    wivex::ReplyBuffer buffer{};
    const wivex::Reply reply(buffer);
    wivex::RunConfig config;
    config.go_ssid = "ab";
    switch (choice % 6) {
    case 0:
        wivex::cmd_to_find_network(session, config);
        return;
    case 1:
        wivex::cmd_to_addnetwork(session);
        return;
    case 2:
        wivex::cmd_to_setnetwork(session, config, static_cast<int>(choice));
        return;
    case 3:
        wivex::p2pFlush(session, reply);
        return;
    case 4:
        wivex::p2pGroupRemove(session, "wlan0", reply.limited_to(choice));
        return;
    default:
        wivex::p2pConnectPbc(session, "02:00:00:00:00:01", "pbc", "7", reply);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    wivex::SupplicantSession& session = fuzz::session();
    wivex::run_options.debug = data[0] / 128;
    fuzz::queue_replies_for_all({reinterpret_cast<const char*>(data) + 1, size - 1});
    run_operation(data[0], session);
    fuzz::drain();
    return 0;
}

// SPDX-License-Identifier: Apache-2.0
// Event messages and their matchers: each line group, separated by a zero byte, is one message.

#include "common/process_state.hpp"
#include "fuzz_session.hpp"
#include "ops/p2p.hpp"

#include <array>
#include <cstdint>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    wivex::SupplicantSession& session = fuzz::session();
    std::string_view rest(reinterpret_cast<const char*>(data), size);
    wivex::run_options.debug = size % 2;
    while (!rest.empty()) {
        const std::string_view message = rest.substr(0, rest.find('\0'));
        rest.remove_prefix(message.size() < rest.size() ? message.size() + 1 : message.size());
        fuzz::queue_event(message);
    }
    constexpr std::array<const char*, 2> roles{"client", "GO"};
    session.waitForEventAny("P2P-GROUP-STARTED", wivex::parseP2pEvent, roles);
    while (session.waitForEvent("P2P", wivex::parseP2pEvent, "02:00:00:00:00:01") != 0) {
    }
    fuzz::drain();
    return 0;
}

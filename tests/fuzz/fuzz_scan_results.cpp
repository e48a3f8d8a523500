// SPDX-License-Identifier: Apache-2.0
// The supplicant's scan listing: is the network found in it, and with which security? The first
// byte chooses diagnostics, then the name up to a newline, then the reply. What is found is
// compared with a plain reading of the reply.

#include "common/process_state.hpp"
#include "fuzz_session.hpp"
#include "ops/station.hpp"
#include "require.hpp"

#include <algorithm>
#include <array>
#include <sstream>
#include <string>

namespace {

using fuzz::require;

constexpr std::size_t longest_reply = 1247;
constexpr std::size_t longest_line = 511;

bool contains(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

// Each line counts up to its zero byte; the zero byte does not end the listing.
bool is_listed(const std::string& name, std::string_view reply) {
    const std::string listing(reply.substr(0, longest_reply));
    const std::string_view text(listing.c_str());
    if (contains(text, "FAIL") || contains(text, "UNKNOWN COMMAND") || !contains(text, "bssid")) {
        return false;
    }
    std::istringstream lines(listing);
    for (std::string line; std::getline(lines, line);) {
        const std::string_view kept = std::string_view(line).substr(0, longest_line);
        const std::string_view searched = kept.substr(0, kept.find('\0'));
        if (!name.empty() && contains(searched, name)) {
            return true;
        }
    }
    return false;
}

template <std::size_t Count>
bool is_one_of(const std::string& value, const std::array<const char*, Count>& values) {
    return std::find(values.begin(), values.end(), value) != values.end();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view input = fuzz::text_of(data, size);
    // A reply that begins with "<" is an event and would be waited past.
    if (input.empty() || contains(input, "\n<") ||
        input.substr(1).find('\n') == std::string::npos) {
        return 0;
    }
    wivex::run_options.debug = data[0] % 2;
    input.remove_prefix(1);
    wivex::RunConfig config;
    config.go_ssid = input.substr(0, input.find('\n'));
    const std::string_view reply = input.substr(config.go_ssid.size() + 1);

    wivex::SupplicantSession& session = fuzz::session();
    fuzz::queue_replies_for_all(reply);
    const int result = wivex::cmd_to_find_network(session, config);
    fuzz::drain();

    require(result == (is_listed(config.go_ssid, reply) ? 0 : 1));
    require(is_one_of(config.scan_proto, std::array{"", "WPA", "RSN", "WPA2"}));
    require(is_one_of(config.scan_key_mgmt, std::array{"", "WPA-PSK", "WPA-EAP", "WPA-NONE"}));
    require(is_one_of(config.scan_pairwise, std::array{"", "CCMP", "TKIP", "CCMP TKIP", "NONE"}));
    // The cipher is told for every network that is found, and for no other.
    require(config.scan_pairwise.empty() == (result == 1));
    return 0;
}

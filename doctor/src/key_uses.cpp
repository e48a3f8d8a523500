// SPDX-License-Identifier: Apache-2.0
#include "key_uses.hpp"

#include "run/config_file.hpp"
#include "text.hpp"

#include <algorithm>
#include <array>
#include <cctype>
#include <string>
#include <vector>

namespace wivex::doctor {

namespace {

// A key of the tool's that is missing here is read by no mode.
constexpr std::array<KeyUse, 18> uses{{
    {"device_type", "*", KeyKind::device_list},
    {"vendor_id", "*", KeyKind::shown},
    {"wifidev", "*", KeyKind::interface},
    {"interface_name", "*", KeyKind::interface},
    {"usbdevlist", "*", KeyKind::device_list},
    {"ctrl_iface", "wdgc", KeyKind::control_folder},
    {"go_ssid", "wg", KeyKind::network_name},
    {"go_passphrase", "wg", KeyKind::pass_phrase},
    {"p2p_target_device_mac", "dc", KeyKind::peer_address},
    {"starting_go_intent", "d", KeyKind::intent},
    {"p2p_iface_ip", "dgcw", KeyKind::shell_argument},
    {"dhcpd_path", "dg", KeyKind::program_folder},
    {"dhcpd_conf", "dg", KeyKind::shell_argument},
    {"iperf_path", "wgc", KeyKind::program_folder},
    {"check_iperf", "wgc", KeyKind::yes_or_no},
    {"driver_path", "l", KeyKind::shown},
    {"loopback_pkt_cnt", "l", KeyKind::number},
    {"loopback_pkt_size", "l", KeyKind::number},
}};

char lowered(char character) {
    return static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
}

// How many characters must be put in, taken out or changed; capitals count as small letters.
std::size_t distance(std::string_view one, std::string_view other) {
    std::vector<std::size_t> row(other.size() + 1);
    for (std::size_t index = 0; index < row.size(); ++index) {
        row[index] = index;
    }
    for (std::size_t line = 0; line < one.size(); ++line) {
        std::size_t diagonal = row[0];
        row[0] = line + 1;
        for (std::size_t index = 1; index < row.size(); ++index) {
            const std::size_t change =
                diagonal + (lowered(one[line]) == lowered(other[index - 1]) ? 0 : 1);
            diagonal = row[index];
            row[index] = std::min({row[index] + 1, row[index - 1] + 1, change});
        }
    }
    return row.back();
}

} // namespace

const KeyUse* find_key_use(std::string_view key) {
    const auto* const found =
        std::find_if(uses.begin(), uses.end(), [key](const KeyUse& use) { return use.key == key; });
    return found == uses.end() ? nullptr : found;
}

bool is_read(const KeyUse& use, const RunPlan& plan) {
    const auto reads = [&use](char letter) {
        return use.readers.find(letter) != std::string_view::npos;
    };
    return use.readers == "*" || (plan.loopback && reads('l')) ||
           (plan.mode != 0 && reads(plan.mode));
}

std::string_view nearest_key(std::string_view key) {
    constexpr std::size_t longest_compared = 64;
    const std::string_view word = trimmed(key).substr(0, longest_compared);
    std::string_view nearest;
    std::size_t least = 1 + std::max<std::size_t>(1, word.size() / 3);
    for (const ConfigKey& known : config_key_table()) {
        const std::size_t steps = distance(word, known.name);
        if (steps < least) {
            least = steps;
            nearest = known.name;
        }
    }
    return nearest;
}

} // namespace wivex::doctor

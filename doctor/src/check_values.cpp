// SPDX-License-Identifier: Apache-2.0
#include "check_values.hpp"

#include "predicted_texts.hpp"
#include "text.hpp"

#include <arpa/inet.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>

namespace wivex::doctor {

namespace {

using namespace predicted;
constexpr std::size_t longest_ssid = 32;
constexpr std::size_t shortest_phrase = 8;
constexpr std::size_t longest_phrase = 63;
constexpr int highest_intent = 15;

std::string in_file(const Facts& facts, const std::string& setting) {
    return "write " + setting + " in " + printable(facts.config_path);
}

void judge_network(const Facts& facts, Point& point) {
    const std::string& ssid = facts.config.go_ssid;
    const std::string& phrase = facts.config.go_passphrase;
    const bool station = facts.plan.mode == 'w';
    if (station && ssid.empty()) {
        point.bad("go_ssid is empty, and no access point is found by an empty name", not_found,
                  in_file(facts, "go_ssid=NAME of the access point"));
    }
    if (ssid.size() > longest_ssid) {
        point.bad("go_ssid has " + std::to_string(ssid.size()) + " bytes; an SSID has at most 32",
                  station ? not_found : group_refused,
                  in_file(facts, "a go_ssid of 32 bytes at most"));
    }
    if (phrase.size() < shortest_phrase || phrase.size() > longest_phrase) {
        point.bad("go_passphrase has " + std::to_string(phrase.size()) +
                      " characters; the supplicant takes 8 to 63",
                  station ? psk_refused : group_refused,
                  in_file(facts, "go_passphrase of 8 to 63 characters"));
    }
}

bool is_address_in_small_letters(const std::string& text) {
    if (text.size() != 17) {
        return false;
    }
    for (std::size_t index = 0; index < text.size(); ++index) {
        const auto character = static_cast<unsigned char>(text[index]);
        const bool right =
            index % 3 == 2 ? character == ':'
                           : std::isdigit(character) != 0 || (character >= 'a' && character <= 'f');
        if (!right) {
            return false;
        }
    }
    return true;
}

void judge_peer(const Facts& facts, Point& point) {
    const std::string& peer = facts.config.p2p_target_device_mac;
    if (peer.empty()) {
        point.bad("p2p_target_device_mac is empty", peer_missing,
                  in_file(facts, "p2p_target_device_mac=P2P device address of the peer"));
    } else if (!is_address_in_small_letters(peer)) {
        point.bad(
            "p2p_target_device_mac is compared as text with what the supplicant prints, which "
            "is six pairs of small hexadecimal digits with colons, not " +
                quoted(peer),
            peer_not_found,
            in_file(facts, "the address in small letters, such as 02:00:00:00:00:01"));
    }
}

bool is_number(std::string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), [](unsigned char character) {
        return std::isdigit(character) != 0;
    });
}

void judge_intent(const Facts& facts, Point& point) {
    const std::string& text = facts.config.starting_go_intent;
    const std::string sent = text.substr(0, 2);
    const int read = std::atoi(sent.c_str());
    if (text.size() > sent.size()) {
        point.note("starting_go_intent " + quoted(text) +
                   ": only its first two characters are sent");
    }
    if (read > highest_intent || read < 0) {
        point.bad("starting_go_intent is sent as " + quoted(sent) + "; an intent is 0 to 15",
                  connect_refused, in_file(facts, "starting_go_intent=0 to 15"));
    } else if (!is_number(text)) {
        point.note("starting_go_intent " + quoted(text) + " is no number and is read as " +
                   std::to_string(std::atoi(text.c_str())));
    }
}

void judge_number(const std::string& key, const std::string& text, Point& point) {
    if (!is_number(text)) {
        point.note(key + " " + quoted(text) + " is no number and is read as " +
                   std::to_string(std::atoi(text.c_str())));
    }
}

// As the shell hands it over, the carriage return is a part of it.
void judge_own_address(const Facts& facts, Point& point) {
    const bool used = facts.plan.may_own_group() || (runs_iperf(facts) && facts.plan.mode != 'g');
    std::string text = facts.config.p2p_iface_ip;
    text.erase(0, text.find_first_not_of(" \t"));
    text.erase(text.find_last_not_of(" \t") + 1);
    in_addr address{};
    if (!used || inet_pton(AF_INET, text.c_str(), &address) == 1) {
        return;
    }
    if (facts.plan.may_own_group() || text.empty()) {
        point.bad("p2p_iface_ip is " + quoted(facts.config.p2p_iface_ip) +
                      ", which is no IPv4 address; the run does not notice that its command fails",
                  "", in_file(facts, "p2p_iface_ip=an IPv4 address"));
    } else {
        point.note("p2p_iface_ip " + quoted(text) + " is taken for the name of the iperf server");
    }
}

void judge_iperf_word(const Facts& facts, Point& point) {
    const std::string& word = facts.config.check_iperf;
    std::string lowered(trimmed(word));
    std::transform(lowered.begin(), lowered.end(), lowered.begin(), [](unsigned char character) {
        return static_cast<char>(std::tolower(character));
    });
    if (facts.plan.mode == 'g' && word != "yes" && lowered == "yes") {
        point.note("check_iperf is " + quoted(word) +
                   ": only yes in small letters starts the server");
    } else if (facts.plan.mode != 'g' && word != "no" && (lowered == "no" || lowered == "0")) {
        point.note("check_iperf is " + quoted(word) +
                   ": anything but no or an empty value runs iperf");
    }
}

} // namespace

bool runs_iperf(const Facts& facts) {
    const std::string& word = facts.config.check_iperf;
    switch (facts.plan.mode) {
    case 'w':
    case 'c':
        return !word.empty() && word != "no";
    case 'g':
        return word == "yes";
    default:
        return false;
    }
}

Remark consequence_of_value(const KeyUse& use, const Facts& facts) {
    const bool station = facts.plan.mode == 'w';
    switch (use.kind) {
    case KeyKind::network_name:
        // A name may end with a blank; the supplicant's list can tell, and is asked with --scan.
        return station ? Remark{State::not_known, {}, not_found, {}} : Remark{};
    case KeyKind::pass_phrase:
        return station ? Remark{State::not_known, {}, no_connection, {}} : Remark{};
    default:
        return {};
    }
}

void judge_values(const Facts& facts, Point& point) {
    switch (facts.plan.mode) {
    case 'w':
    case 'g':
        judge_network(facts, point);
        judge_iperf_word(facts, point);
        break;
    case 'd':
        judge_peer(facts, point);
        judge_intent(facts, point);
        break;
    case 'c':
        judge_peer(facts, point);
        judge_iperf_word(facts, point);
        break;
    default:
        break;
    }
    judge_own_address(facts, point);
    if (facts.plan.loopback) {
        judge_number("loopback_pkt_cnt", facts.config.loopback_pkt_cnt, point);
        judge_number("loopback_pkt_size", facts.config.loopback_pkt_size, point);
    }
}

} // namespace wivex::doctor

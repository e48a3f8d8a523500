// SPDX-License-Identifier: Apache-2.0
// The supplicant: its socket, its answers, its settings for Wi-Fi Direct.
#include "checks.hpp"
#include "predicted_texts.hpp"
#include "probe.hpp"
#include "supplicant_client.hpp"
#include "text.hpp"

#include <signal.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>

namespace wivex::doctor {

namespace {

using namespace predicted;

std::string start_command(const Facts& facts) {
    return "wpa_supplicant -B -i " + shell_word(facts.config.interface_name) + " -C " +
           shell_word(facts.config.ctrl_iface) + " -c /etc/wpa_supplicant.conf";
}

std::string what_is_in(const std::string& folder) {
    std::string text;
    for (const std::string& name : names_in(folder)) {
        text += " " + printable(name);
    }
    return text.empty() ? " nothing" : text;
}

bool can_be_reached(const Facts& facts, const std::string& path, Point& point) {
    if (facts.config.ctrl_iface.empty()) {
        point.bad("ctrl_iface is empty", cannot_open,
                  "write ctrl_iface=/var/run/wpa_supplicant in " + printable(facts.config_path));
        return false;
    }
    if (const std::string why = why_no_client_socket(); !why.empty()) {
        point.bad(why, cannot_open, "make room in /tmp, or mount it writable: df /tmp");
        return false;
    }
    if (const std::string why = why_no_connection(path); !why.empty()) {
        point.bad(quoted(path) + ": " + why + "; in " + quoted(facts.config.ctrl_iface) + ":" +
                      what_is_in(facts.config.ctrl_iface),
                  cannot_open,
                  start_command(facts) + "; or set ctrl_iface in " + printable(facts.config_path));
        return false;
    }
    return true;
}

std::string value_in(const std::string& status, const std::string& key) {
    const std::size_t begin = status.starts_with(key + "=") ? 0 : status.find("\n" + key + "=");
    if (begin == std::string::npos) {
        return {};
    }
    const std::size_t value = status.find('=', begin) + 1;
    return status.substr(value, status.find('\n', value) - value);
}

std::string setting_of(SupplicantClient& client, const std::string& name) {
    const SupplicantAnswer answer = client.ask("GET " + name);
    return answer.outcome == SupplicantAnswer::Outcome::answered
               ? std::string(trimmed(first_line(answer.text)))
               : std::string();
}

void judge_group_interface(SupplicantClient& client, Point& point) {
    const std::string value = setting_of(client, "p2p_no_group_iface");
    if (value == "1") {
        return;
    }
    const std::string what = value.empty() ? "the supplicant does not tell p2p_no_group_iface"
                                           : "p2p_no_group_iface is " + quoted(value) +
                                                 ": the group may get an interface of its own";
    point.unknown(what + ", and the run works on the one that the configuration names", "",
                  "p2p_no_group_iface=1 in the supplicant's settings, and start it again");
}

void judge_direct(const Facts& facts, SupplicantClient& client, const std::string& status,
                  Point& point) {
    const char* const prints = facts.plan.mode == 'g' ? group_refused : find_refused;
    if (value_in(status, "wpa_state").empty()) {
        point.unknown("its STATUS does not tell whether it speaks Wi-Fi Direct", prints,
                      "wpa_supplicant -v, and start it again");
        return;
    }
    if (value_in(status, "p2p_device_address").empty()) {
        point.bad(
            "Wi-Fi Direct is not there: it was built without, or p2p_disabled=1, or the driver "
            "has none",
            prints, "p2p_disabled=0 in the supplicant's settings, and start it again");
        return;
    }
    judge_group_interface(client, point);
}

void tell_version(SupplicantClient& client, const std::string& status, Point& point) {
    const std::string version = setting_of(client, "version");
    const std::string state = value_in(status, "wpa_state");
    const std::string country = setting_of(client, "country");
    point.found += version.empty() ? "" : ", version " + printable(version);
    point.found += state.empty() ? "" : ", " + printable(state);
    point.found += country.empty() ? "" : ", country " + printable(country);
}

void ask_for_all(const Facts& facts, const std::string& path, Point& point) {
    SupplicantClient client(path);
    if (!client) {
        point.bad(quoted(path) + " takes no connection", cannot_open, start_command(facts));
        return;
    }
    if (const int result = client.attach(); result != 0) {
        point.bad(result == -2 ? "it does not answer within 10 seconds"
                               : "it lets nobody listen to its events",
                  cannot_attach, "start the supplicant again: " + start_command(facts));
        return;
    }
    const SupplicantAnswer status = client.ask("STATUS");
    tell_version(client, status.text, point);
    if (facts.plan.forms_group()) {
        judge_direct(facts, client, status.text, point);
    }
}

// "wpa_ctrl_PID-NUMBER"; 0 for another name.
pid_t owner_of(const std::string& socket_name) {
    constexpr std::size_t prefix_length = 9;
    return static_cast<pid_t>(std::atoi(socket_name.c_str() + prefix_length));
}

// The run removes them all, whoever uses them.
void tell_sockets_of_others(Point& point) {
    int dead = 0;
    for (const std::string& name : names_in("/tmp")) {
        if (!name.starts_with("wpa_ctrl_")) {
            continue;
        }
        const pid_t owner = owner_of(name);
        if (owner > 0 && kill(owner, 0) != 0 && errno == ESRCH) {
            ++dead;
            continue;
        }
        point.note("/tmp/" + printable(name) + " belongs to process " + std::to_string(owner) +
                   " (" + printable(line_of("/proc/" + std::to_string(owner) + "/comm")) +
                   "); the run removes it, and that process gets no answers any more");
    }
    if (dead > 0) {
        point.note(std::to_string(dead) +
                   " client sockets in /tmp of processes that have ended; the run "
                   "removes them");
    }
}

} // namespace

Point check_supplicant(const Facts& facts) {
    Point point("supplicant");
    const std::string path = facts.config.ctrl_iface + "/" + facts.config.interface_name;
    point.found = printable(path);
    tell_sockets_of_others(point);
    if (can_be_reached(facts, path, point)) {
        ask_for_all(facts, path, point);
    }
    return point;
}

} // namespace wivex::doctor

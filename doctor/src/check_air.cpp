// SPDX-License-Identifier: Apache-2.0
// The access point of -w, as the supplicant hears it. Asked for with --scan only, since it scans.
#include "checks.hpp"
#include "common/buffers.hpp"
#include "predicted_texts.hpp"
#include "supplicant_client.hpp"
#include "text.hpp"

#include <cstdlib>

namespace wivex::doctor {

namespace {

using namespace predicted;
constexpr int scan_seconds = 20;

struct Heard {
    std::string bssid;
    int frequency = 0;
    std::string signal;
    std::string flags;
    std::string name;
};

// "BSSID<tab>frequency<tab>signal<tab>flags<tab>SSID"
Heard parse_line(std::string_view line) {
    Heard heard;
    const auto next = [&line] {
        const std::string_view field = line.substr(0, line.find('\t'));
        line.remove_prefix(std::min(field.size() + 1, line.size()));
        return std::string(field);
    };
    heard.bssid = next();
    heard.frequency = std::atoi(next().c_str());
    heard.signal = next();
    heard.flags = next();
    heard.name = line;
    return heard;
}

int channel_of(int frequency) {
    if (frequency == 2484) {
        return 14;
    }
    if (frequency < 2500) {
        return (frequency - 2407) / 5;
    }
    return frequency < 5950 ? (frequency - 5000) / 5 : (frequency - 5950) / 5;
}

// The run takes every line that holds the name anywhere, and the last one decides.
bool find_line(std::string_view listing, const std::string& name, std::string_view& found) {
    bool any = false;
    while (!listing.empty()) {
        const std::string_view line = first_line(listing);
        listing.remove_prefix(std::min(line.size() + 1, listing.size()));
        if (line.find(name) != std::string_view::npos) {
            found = line;
            any = true;
        }
    }
    return any;
}

void judge_security(const Heard& heard, Point& point) {
    const auto has = [&heard](const char* text) {
        return heard.flags.find(text) != std::string::npos;
    };
    if (!has("[WPA")) {
        point.bad("it is open or of a kind that the run does not know: " + printable(heard.flags),
                  open_network, "WPA2-PSK on the access point");
    } else if (!has("[WPA-PSK") && !has("[WPA2-PSK")) {
        point.bad("the run can join with a pass phrase only, and it has " + printable(heard.flags),
                  no_connection, "WPA2-PSK on the access point");
    }
}

void judge_listing(const std::string& listing, const std::string& name, Point& point) {
    constexpr std::size_t run_reads = REPLY_BUFFER_SIZE - 1;
    std::string_view line;
    if (find_line(std::string_view(listing).substr(0, run_reads), name, line)) {
        const Heard heard = parse_line(line);
        point.found = quoted(heard.name) + " is " + printable(heard.bssid) + ", " +
                      printable(heard.signal) + " dBm, channel " +
                      std::to_string(channel_of(heard.frequency)) + ", " + printable(heard.flags);
        judge_security(heard, point);
        return;
    }
    const bool behind = find_line(listing, name, line);
    point.bad(behind ? quoted(name) +
                           " stands behind the first 1247 bytes of the listing, which are all "
                           "that the run reads"
                     : quoted(name) + " is not heard",
              name + not_found,
              behind ? "a room with fewer access points, or a shielded one"
                     : "switch the access point on, or mend go_ssid");
}

// False when the scan cannot be judged further.
bool scan(SupplicantClient& client, Point& point) {
    if (client.attach() != 0) {
        point.unknown("the supplicant lets nobody listen to its events", "", "");
        return false;
    }
    const SupplicantAnswer answer = client.ask("SCAN");
    if (answer.outcome == SupplicantAnswer::Outcome::silent) {
        point.unknown("the supplicant does not answer SCAN", "", "start the supplicant again");
        return false;
    }
    if (answer.text.find("FAIL-BUSY") != std::string::npos) {
        point.unknown("another scan goes on", "", "ask again");
        return false;
    }
    if (answer.outcome == SupplicantAnswer::Outcome::refused) {
        point.bad("the supplicant refuses to scan", scan_refused,
                  "is the interface up, the module on the bus? dmesg");
        return false;
    }
    if (!client.await_event("CTRL-EVENT-SCAN-RESULTS", scan_seconds)) {
        point.unknown("the scan did not end within 20 seconds", "",
                      "dmesg; start the supplicant again");
        return false;
    }
    return true;
}

} // namespace

Point check_air(const Facts& facts, const Point& supplicant) {
    Point point("air");
    if (facts.plan.mode != 'w') {
        point.skip("the peer of this mode is looked for by the run alone");
        return point;
    }
    if (!facts.scan_wanted) {
        point.skip("the access point is looked for with --scan only");
        return point;
    }
    const std::string& name = facts.config.go_ssid;
    SupplicantClient client(facts.config.ctrl_iface + "/" + facts.config.interface_name);
    if (supplicant.state() == State::bad || !client || name.empty()) {
        point.unknown("without a supplicant that answers, and a name, nothing can be heard", "",
                      "see the points before");
        return point;
    }
    if (scan(client, point)) {
        judge_listing(client.ask("SCAN_RESULTS").text, name, point);
    }
    return point;
}

} // namespace wivex::doctor

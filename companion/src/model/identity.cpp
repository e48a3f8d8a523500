// SPDX-License-Identifier: Apache-2.0
#include "model/identity.hpp"

#include "common/words.hpp"
#include "model/run.hpp"

#include <algorithm>
#include <cctype>
#include <cmath>

namespace wivex::report {

namespace {

void warn_of_macs(const Log& log, std::vector<std::string>& warnings) {
    const SeenMacs& macs = log.macs;
    const std::string whose =
        log.identity.serial.empty() ? "one console" : "one serial number, " + log.identity.serial;
    if (macs.kernel.size() > 1) {
        warnings.push_back("several MAC addresses of the kernel in " + whose + ": " +
                           listed(macs.kernel, "and"));
    }
    if (macs.chip.size() > 1) {
        warnings.push_back("several MAC addresses of the chip in " + whose + ": " +
                           listed(macs.chip, "and"));
    }
    if (!macs.differing_kernel.empty()) {
        warnings.push_back("the kernel's MAC address " + macs.differing_kernel +
                           " is not the chip's, " + macs.differing_chip);
    }
    const std::string& told = log.identity.mac;
    if (told.empty() || macs.kernel.empty() || std::ranges::count(macs.kernel, told) != 0) {
        return;
    }
    warnings.push_back("the interface's MAC address is " + told + ", and the console shows " +
                       listed(macs.kernel, "and"));
}

void warn_of_previous(const Log& log, std::vector<std::string>& warnings) {
    const Identity& identity = log.identity;
    const std::string mac = identity_mac(log);
    if (mac.empty() || identity.serial.empty() || identity.previous_serial.empty() ||
        identity.previous_mac.empty()) {
        return;
    }
    const bool same_serial = identity.serial == identity.previous_serial;
    const bool same_mac = mac == identity.previous_mac;
    if (same_mac && !same_serial) {
        warnings.push_back("two serial numbers with one MAC address, " + mac + ": " +
                           identity.serial + ", and " + identity.previous_serial +
                           " in the report that stood here before");
    } else if (same_serial && !same_mac) {
        warnings.push_back("one serial number, " + identity.serial +
                           ", with two MAC addresses: " + mac + ", and " + identity.previous_mac +
                           " in the report that stood here before");
    }
}

std::string jump_words(const ClockJumps& jumps) {
    const std::string size = duration_text(std::fabs(jumps.first_seconds));
    const std::string where =
        jumps.first_line == 0 ? " in it" : " before line " + std::to_string(jumps.first_line);
    std::string text = "the clock goes " +
                       std::string(jumps.first_seconds < 0 ? "back by " : "on by ") + size + where;
    if (jumps.count > 1) {
        text += ", and jumps " + count_text(jumps.count - 1, "more time", "more times");
    }
    return text;
}

void warn_of_clocks(const Log& log, std::vector<std::string>& warnings) {
    std::uint32_t number = log.dropped_runs;
    for (const Run& run : log.runs) {
        ++number;
        const ClockJumps& jumps = run.when.jumps;
        if (jumps.count != 0) {
            warnings.push_back("run " + std::to_string(number) + ": " + jump_words(jumps) +
                               (jumps.first_line == 0
                                    ? ": its begin and its end do not fit together"
                                    : ": times across it are taken as unknown"));
        }
    }
}

void say(std::string& sentence, std::string_view word, const std::string& value) {
    if (!value.empty()) {
        sentence += (sentence.empty() ? "" : ", ") + std::string(word) + " " + value;
    }
}

} // namespace

std::string mac_address(std::string_view text) {
    constexpr std::size_t length = 17;
    if (text.size() != length) {
        return {};
    }
    std::string lower;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto c = static_cast<unsigned char>(text[i]);
        if (i % 3 == 2 ? c != ':' : std::isxdigit(c) == 0) {
            return {};
        }
        lower += static_cast<char>(std::tolower(c));
    }
    return lower;
}

const std::vector<NamedText>& identity_texts() {
    static const std::vector<NamedText> texts{
        {"serial", &Identity::serial},     {"part", &Identity::part},
        {"station", &Identity::station},   {"operator", &Identity::operator_name},
        {"mac", &Identity::mac},           {"kernel", &Identity::kernel},
        {"driver", &Identity::driver},     {"driver_version", &Identity::driver_version},
        {"firmware", &Identity::firmware}, {"regulatory_domain", &Identity::regulatory_domain},
    };
    return texts;
}

std::string identity_mac(const Log& log) {
    if (!log.identity.mac.empty()) {
        return log.identity.mac;
    }
    return log.macs.kernel.size() == 1 ? log.macs.kernel.front() : "";
}

std::vector<std::string> identity_warnings(const Log& log) {
    std::vector<std::string> warnings = log.identity.warnings;
    warn_of_macs(log, warnings);
    warn_of_previous(log, warnings);
    warn_of_clocks(log, warnings);
    return warnings;
}

std::string identity_sentence(const Identity& identity) {
    std::string sentence;
    say(sentence, "unit", identity.serial);
    say(sentence, "part", identity.part);
    say(sentence, "station", identity.station);
    say(sentence, "attempt", identity.attempt == 0 ? "" : std::to_string(identity.attempt));
    say(sentence, "operator", identity.operator_name);
    return sentence;
}

} // namespace wivex::report

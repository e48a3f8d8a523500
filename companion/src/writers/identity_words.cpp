// SPDX-License-Identifier: Apache-2.0
#include "writers/identity_words.hpp"

#include <algorithm>

namespace wivex::report {

namespace {

// "driver_version" as "Driver version".
std::string title_of_member(std::string_view name) {
    if (name == "mac") {
        return "MAC";
    }
    std::string title(name);
    std::ranges::replace(title, '_', ' ');
    title.front() = static_cast<char>(title.front() - 'a' + 'A');
    return title;
}

} // namespace

std::vector<std::pair<std::string, std::string>> known_facts(const Log& log) {
    const Identity& identity = log.identity;
    std::vector<std::pair<std::string, std::string>> facts;
    for (const NamedText& row : identity_texts()) {
        const bool mac = row.text == &Identity::mac;
        const std::string text = mac ? identity_mac(log) : identity.*row.text;
        if (!text.empty()) {
            facts.emplace_back(title_of_member(row.name), text);
        }
        if (row.text == &Identity::station && identity.attempt != 0) {
            facts.emplace_back("Attempt", std::to_string(identity.attempt));
        }
    }
    facts.insert(facts.end(), identity.facts.begin(), identity.facts.end());
    return facts;
}

std::string began_words(const Run& run) {
    return run.when.began ? rfc3339(*run.when.began) : run.began;
}

std::string zone_words(const Run& run) {
    return run.when.zone_assumed
               ? "The time stamps name no zone: they were read as local times of the machine that "
                 "made this report."
               : "";
}

} // namespace wivex::report

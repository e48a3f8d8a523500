// SPDX-License-Identifier: Apache-2.0
// Which device was tested, where, by whom and for the how many-th time: what the caller says, what
// the device itself tells, and the MAC addresses that the console shows.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace wivex::report {

struct Log;

/// Texts are printable UTF-8; an empty one is not known.
struct Identity {
    std::string serial;
    std::string part;
    std::string station;
    /// From 1; 0: not known.
    std::uint32_t attempt = 0;
    std::string operator_name;
    /// Of the Wi-Fi interface, in lower case.
    std::string mac;
    std::string kernel;
    std::string driver;
    std::string driver_version;
    std::string firmware;
    std::string regulatory_domain;
    /// Whatever else the caller says: key and value, in the order told.
    std::vector<std::pair<std::string, std::string>> facts;
    /// Of the report that stands in the folder before this one takes its place.
    std::string previous_serial;
    std::string previous_mac;
    /// What was found before the console was read.
    std::vector<std::string> warnings;
};

/// MAC addresses that a console shows, each once, in lower case and in their order; the first few.
struct SeenMacs {
    std::vector<std::string> kernel;
    std::vector<std::string> chip;
    /// A run showed a kernel's and a chip's address that differ: the first such pair.
    std::string differing_kernel;
    std::string differing_chip;
};

/// `text` in lower case when it is a MAC address, and nothing otherwise.
std::string mac_address(std::string_view text);

/// A member of the identity under the name that all outputs use.
struct NamedText {
    std::string_view name;
    std::string Identity::*text;
};

/// The texts of an identity in the order in which they are shown, without attempt and facts.
const std::vector<NamedText>& identity_texts();

/// The interface's MAC: as the device told it, or as the console shows it when it shows one only.
std::string identity_mac(const Log& log);

/// Everything that makes it doubtful which device this was, or when: in sentences.
std::vector<std::string> identity_warnings(const Log& log);

/// "unit 4711, part P, station S, attempt 2, operator O": what is known of it; may be empty.
std::string identity_sentence(const Identity& identity);

} // namespace wivex::report

// SPDX-License-Identifier: Apache-2.0
#include "console/arguments.hpp"

#include <algorithm>

namespace wivex::report {

namespace {

constexpr std::string_view updated = " Updated";

std::string_view before(std::string_view text, std::string_view mark) {
    return text.substr(0, text.find(mark));
}

std::string_view behind(std::string_view text, std::string_view mark) {
    const std::size_t found = text.find(mark);
    return found == std::string_view::npos ? std::string_view() : text.substr(found + mark.size());
}

} // namespace

std::pair<std::string_view, std::string_view> chip_ids_in(std::string_view argument) {
    constexpr std::string_view between = " and product id ";
    if (argument.find(between) == std::string_view::npos) {
        return {};
    }
    return {before(argument, between), behind(argument, between)};
}

std::pair<std::string_view, std::string_view> mac_pair_in(std::string_view argument) {
    return {mac_in(before(argument, "]")), mac_in(before(behind(argument, "curr_mac ["), "]"))};
}

std::string_view mac_in(std::string_view argument) {
    constexpr std::size_t mac_length = 17;
    return argument.substr(0, std::min(argument.size(), mac_length));
}

std::string_view key_in(std::string_view argument) {
    return before(argument, " value = ");
}

std::string_view lease_in(std::string_view argument) {
    return argument.substr(0, argument.find_first_of(" ,"));
}

std::string_view config_path_in(std::string_view argument) {
    return argument.ends_with(" Failed") ? std::string_view() : argument;
}

bool says_updated(std::string_view argument) {
    return argument.ends_with(updated);
}

std::string_view result_path_in(std::string_view argument) {
    if (argument.ends_with(updated)) {
        argument.remove_suffix(updated.size());
    }
    return argument;
}

bool is_untouched_status(std::string_view argument) {
    return argument.starts_with("ff<");
}

bool closed_by_mode(std::string_view argument) {
    return argument.starts_with("0");
}

} // namespace wivex::report

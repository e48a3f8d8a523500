// SPDX-License-Identifier: Apache-2.0
#include "console/tells.hpp"

#include <algorithm>
#include <charconv>

namespace wivex::report::tells {

namespace {

constexpr std::string_view updated = " Updated";

std::string_view before(std::string_view text, std::string_view mark) {
    return text.substr(0, text.find(mark));
}

std::string_view behind(std::string_view text, std::string_view mark) {
    const std::size_t found = text.find(mark);
    return found == std::string_view::npos ? std::string_view() : text.substr(found + mark.size());
}

std::string_view mac_in(std::string_view text) {
    constexpr std::size_t mac_length = 17;
    return text.substr(0, std::min(text.size(), mac_length));
}

// The decimal number at the start; 0 when there is none.
long number_in(std::string_view text) {
    long value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

std::string_view path_in(std::string_view argument) {
    if (argument.ends_with(updated)) {
        argument.remove_suffix(updated.size());
    }
    return argument;
}

} // namespace

Told run_begins(const Match& match) {
    std::string_view build = match.said.substr(tool_prefix.size());
    while (build.ends_with(' ')) {
        build.remove_suffix(1);
    }
    return RunBegins{build};
}

Told starting(const Match& /*match*/) {
    return Starting{};
}

Told config_file(const Match& match) {
    const bool failed = match.argument.ends_with(" Failed");
    return Fact(ConfigFile{failed ? std::string_view() : match.argument});
}

Told unknown_key(const Match& match) {
    return Fact(UnknownKey{before(match.argument, " value = ")});
}

Told chip_type(const Match& match) {
    return Fact(ChipType{static_cast<int>(number_in(match.argument))});
}

// "0cf3 and product id 9378".
Told chip_ids(const Match& match) {
    constexpr std::string_view between = " and product id ";
    if (match.argument.find(between) == std::string_view::npos) {
        return Fact(ChipIds{});
    }
    return Fact(ChipIds{before(match.argument, between), behind(match.argument, between)});
}

Told kernel_mac(const Match& match) {
    return Fact(KernelMac{mac_in(match.argument)});
}

Told chip_mac(const Match& match) {
    return Fact(ChipMac{mac_in(match.argument)});
}

// "02:..] curr_mac [02:..]".
Told mac_pair(const Match& match) {
    const std::string_view current = behind(match.argument, "curr_mac [");
    return Fact(MacPair{mac_in(before(match.argument, "]")), mac_in(before(current, "]"))});
}

// "192.168.49.40 obtained from ..."
Told own_address(const Match& match) {
    return Fact(OwnAddress{match.argument.substr(0, match.argument.find_first_of(" ,"))});
}

// "ff<===" when it was left.
Told loopback_status(const Match& match) {
    return CourseEvent(LoopbackStatus{match.argument.starts_with("ff<")});
}

Told connection_closed(const Match& match) {
    return CourseEvent(ConnectionClosed{match.argument.starts_with("0")});
}

Told role_owner(const Match& /*match*/) {
    return CourseEvent(RoleTold{true});
}

Told role_client(const Match& /*match*/) {
    return CourseEvent(RoleTold{false});
}

Told names_follow(const Match& match) {
    return CourseEvent(NamesFollow{number_in(match.argument)});
}

Told matches_follow(const Match& match) {
    return CourseEvent(MatchesFollow{match.argument});
}

Told network_named(const Match& match) {
    return CourseEvent(NetworkNamed{match.argument});
}

Told softap_end(const Match& match) {
    return Ending(SoftapEnd{match.row->text});
}

Told results_lost(const Match& match) {
    return Ending(ResultsLost{match.said});
}

Told result_path(const Match& match) {
    return Ending(ResultPath{path_in(match.argument)});
}

Told result_unwritable(const Match& match) {
    return Ending(ResultUnwritable{match.row->text, path_in(match.argument)});
}

Told result_written(const Match& match) {
    return Ending(ResultWritten{path_in(match.argument), match.argument.ends_with(updated)});
}

} // namespace wivex::report::tells

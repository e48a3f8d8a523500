// SPDX-License-Identifier: Apache-2.0
#include "console/stamp_reader.hpp"

#include "common/words.hpp"

#include <charconv>
#include <ctime>

namespace wivex::report {

namespace {

// Cheap, because it is asked for every line.
bool may_be_stamped(std::string_view line) {
    constexpr std::size_t shortest_stamp = 8;
    if (line.size() < shortest_stamp) {
        return false;
    }
    const auto is_digit = [](char c) { return c >= '0' && c <= '9'; };
    const bool month = line[0] >= 'A' && line[0] <= 'S' && line[3] == ' ';
    return is_digit(line[0]) || (line[0] == '[' && is_digit(line[1])) || month;
}

std::time_t whole_seconds(std::string_view text) {
    std::time_t value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

} // namespace

std::string_view StampReader::strip(std::string_view line, const Recogniser& recogniser) {
    text_ = {};
    if (!active() && !may_be_stamped(line)) {
        return line;
    }
    const auto stamp = read_stamp(line, format_);
    if (!stamp) {
        return line;
    }
    if (!active()) {
        if (!recogniser.begins_with_text(stamp->rest)) {
            return line;
        }
        format_ = stamp->format;
    }
    text_ = stamp->text;
    clock_.take(*stamp);
    return stamp->rest;
}

std::string StampReader::date_and_time() const {
    if (format_ == StampFormat::epoch) {
        return local_time(whole_seconds(text_));
    }
    if (format_ != StampFormat::iso || text_.size() < 19) {
        return {};
    }
    std::string text(text_.substr(text_.starts_with('[') ? 1 : 0, 19));
    text.at(10) = ' ';
    return text;
}

} // namespace wivex::report

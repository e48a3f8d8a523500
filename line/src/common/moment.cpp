// SPDX-License-Identifier: Apache-2.0
#include "common/moment.hpp"

#include <array>
#include <charconv>
#include <ctime>

namespace wivex::line {

namespace {

// Reads fixed fields from the left; fails for good at the first that is not as expected.
class Fields {
public:
    explicit Fields(std::string_view text) : rest_(text) {}

    int number(std::size_t digits, int least, int most) {
        int value = 0;
        const char* const end = rest_.data() + std::min(digits, rest_.size());
        const auto [stop, error] = std::from_chars(rest_.data(), end, value);
        good_ = good_ && rest_.size() >= digits && error == std::errc() && stop == end &&
                rest_.front() != '-' && value >= least && value <= most;
        rest_.remove_prefix(std::min(digits, rest_.size()));
        return value;
    }

    char one_of(std::string_view allowed) {
        if (rest_.empty() || allowed.find(rest_.front()) == std::string_view::npos) {
            good_ = false;
            return 0;
        }
        const char found = rest_.front();
        rest_.remove_prefix(1);
        return found;
    }

    void skip_fraction() {
        if (rest_.starts_with('.')) {
            const std::size_t end = rest_.find_first_not_of("0123456789", 1);
            good_ = good_ && end != 1 && rest_.size() > 1;
            rest_.remove_prefix(std::min(end, rest_.size()));
        }
    }

    bool is_done() const {
        return good_ && rest_.empty();
    }

private:
    std::string_view rest_;
    bool good_ = true;
};

std::tm local(Moment moment) {
    const auto seconds = static_cast<std::time_t>(moment);
    std::tm parts{};
    localtime_r(&seconds, &parts);
    return parts;
}

template <typename Writer>
std::string formatted(Moment moment, Writer write) {
    const std::tm parts = local(moment);
    std::array<char, 48> text{};
    const std::size_t length = write(text.data(), text.size(), &parts);
    return {text.data(), length};
}

Moment begin_of(std::tm parts, int days) {
    parts.tm_mday += days;
    parts.tm_hour = parts.tm_min = parts.tm_sec = 0;
    parts.tm_isdst = -1;
    return std::mktime(&parts);
}

bool is_date(const std::tm& parts) {
    std::tm other = parts;
    return timegm(&other) != -1 && other.tm_mday == parts.tm_mday && other.tm_mon == parts.tm_mon;
}

} // namespace

std::optional<Moment> moment_of(std::string_view text) {
    Fields fields(text);
    std::tm parts{};
    parts.tm_year = fields.number(4, 1970, 9999) - 1900;
    fields.one_of("-");
    parts.tm_mon = fields.number(2, 1, 12) - 1;
    fields.one_of("-");
    parts.tm_mday = fields.number(2, 1, 31);
    fields.one_of("Tt ");
    parts.tm_hour = fields.number(2, 0, 23);
    fields.one_of(":");
    parts.tm_min = fields.number(2, 0, 59);
    fields.one_of(":");
    parts.tm_sec = fields.number(2, 0, 60);
    fields.skip_fraction();
    Moment offset = 0;
    const char zone = fields.one_of("Zz+-");
    if (zone == '+' || zone == '-') {
        offset = fields.number(2, 0, 23) * seconds_of_hour;
        fields.one_of(":");
        offset += static_cast<Moment>(fields.number(2, 0, 59)) * 60;
    }
    if (!fields.is_done() || !is_date(parts)) {
        return {};
    }
    return timegm(&parts) - (zone == '-' ? -offset : offset);
}

std::string moment_text(Moment moment) {
    return formatted(moment, [](char* text, std::size_t size, const std::tm* parts) {
        return std::strftime(text, size, "%Y-%m-%d %H:%M:%S", parts);
    });
}

std::string stamp_text(Moment moment) {
    const std::string text =
        formatted(moment, [](char* buffer, std::size_t size, const std::tm* parts) {
            return std::strftime(buffer, size, "%Y-%m-%dT%H:%M:%S%z", parts);
        });
    const std::size_t minutes = text.size() - 2;
    return text.substr(0, minutes) + ":" + text.substr(minutes);
}

std::string day_text(Moment moment) {
    return moment_text(moment).substr(0, 10);
}

Moment day_begin(Moment moment, int back) {
    return begin_of(local(moment), -back);
}

std::optional<Moment> span_of(std::string_view text) {
    Moment count = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, count);
    if (error != std::errc() || stop + 1 != end || count < 1 || count > 1'000'000) {
        return {};
    }
    switch (*stop) {
    case 's':
        return count;
    case 'm':
        return count * 60;
    case 'h':
        return count * seconds_of_hour;
    case 'd':
        return count * seconds_of_day;
    default:
        return {};
    }
}

Moment DayTeller::day_of(Moment moment) {
    if (moment < begin_ || moment >= end_) {
        const std::tm parts = local(moment);
        begin_ = begin_of(parts, 0);
        end_ = begin_of(parts, 1);
    }
    return begin_;
}

} // namespace wivex::line

// SPDX-License-Identifier: Apache-2.0
#include "html_text.hpp"

#include <array>
#include <cmath>
#include <cstdarg>
#include <cstdio>

namespace wivex::report {

namespace {

[[gnu::format(printf, 1, 2)]] std::string formatted(const char* format, ...) {
    std::array<char, 64> text{};
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text.data(), text.size(), format, arguments);
    va_end(arguments);
    return text.data();
}

} // namespace

std::string escaped(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (const char c : text) {
        switch (c) {
        case '&':
            result += "&amp;";
            break;
        case '<':
            result += "&lt;";
            break;
        case '>':
            result += "&gt;";
            break;
        case '"':
            result += "&quot;";
            break;
        case '\'':
            result += "&#39;";
            break;
        default:
            result += c;
        }
    }
    return result;
}

std::string with_code(std::string_view text) {
    std::string result;
    bool code = false;
    while (!text.empty()) {
        const std::size_t quote = text.find('`');
        result += escaped(text.substr(0, quote));
        if (quote == std::string_view::npos) {
            break;
        }
        code = !code;
        result += code ? "<code>" : "</code>";
        text.remove_prefix(quote + 1);
    }
    return result + (code ? "</code>" : "");
}

std::string duration_text(double seconds) {
    if (std::isnan(seconds)) {
        return "unknown";
    }
    if (seconds < 0.0005) {
        return "0 s";
    }
    if (seconds < 9.95) {
        return formatted("%.*f s", seconds < 0.095 ? 3 : 1, seconds);
    }
    if (seconds < 59.5) {
        return formatted("%.0f s", seconds);
    }
    const auto whole = static_cast<long long>(std::llround(seconds));
    if (whole < 3600) {
        return formatted("%lld min %02lld s", whole / 60, whole % 60);
    }
    return formatted("%lld h %02lld min", whole / 3600, whole / 60 % 60);
}

std::string figure_text(double value) {
    const double size = std::fabs(value);
    if (size < 0.005) {
        return "0";
    }
    const int places = size >= 100 ? 0 : size < 1 ? 2 : 1;
    return formatted("%.*f", places, value);
}

std::string count_text(std::uint64_t count, std::string_view singular, std::string_view plural) {
    return std::to_string(count) + " " + std::string(count == 1 ? singular : plural);
}

} // namespace wivex::report

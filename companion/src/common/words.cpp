// SPDX-License-Identifier: Apache-2.0
#include "common/words.hpp"

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

double rounded(double value) {
    return std::round(value * 1000) / 1000;
}

std::string exact_text(double value) {
    std::string text = formatted("%.3f", rounded(value));
    text.erase(text.find_last_not_of('0') + 1);
    if (text.ends_with('.')) {
        text.pop_back();
    }
    return text == "-0" ? "0" : text;
}

std::string count_text(std::uint64_t count, std::string_view singular, std::string_view plural) {
    return std::to_string(count) + " " + std::string(count == 1 ? singular : plural);
}

std::string iterations_text(std::uint64_t count) {
    return count_text(count, "iteration", "iterations");
}

std::string listed(const std::vector<std::string>& texts, const std::string& last) {
    std::string text;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const std::string between = i == 0 ? "" : i + 1 == texts.size() ? " " + last + " " : ", ";
        text += between + texts[i];
    }
    return text;
}

std::string local_time(std::time_t seconds) {
    std::tm parts{};
    if (localtime_r(&seconds, &parts) == nullptr) {
        return {};
    }
    std::array<char, 32> text{};
    const std::size_t length = std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S", &parts);
    return {text.data(), length};
}

} // namespace wivex::report

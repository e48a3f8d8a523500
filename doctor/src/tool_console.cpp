// SPDX-License-Identifier: Apache-2.0
#include "tool_console.hpp"

#include "common/console.hpp"

#include <algorithm>
#include <array>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <utility>

// These stand in place of the functions of common/console.cpp, which is not linked.

namespace wivex {

namespace {

constexpr std::size_t longest_kept = 16384;

std::string kept;

[[gnu::format(printf, 1, 0)]] void keep(const char* format, va_list arguments) {
    std::array<char, 2048> text{};
    const int length = std::vsnprintf(text.data(), text.size(), format, arguments);
    if (length > 0 && kept.size() < longest_kept) {
        kept.append(text.data(), std::min(static_cast<std::size_t>(length), text.size() - 1));
    }
}

} // namespace

void print_out(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    keep(format, arguments);
    va_end(arguments);
}

void print_err(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    keep(format, arguments);
    va_end(arguments);
}

void print_error(const char* prefix, int error) {
    print_err("%s: %s\n", prefix, std::strerror(error));
}

void flush_out() {}

void shield_from_hanging_files() {}

namespace doctor {

std::string take_tool_output() {
    return std::exchange(kept, {});
}

} // namespace doctor

} // namespace wivex

// SPDX-License-Identifier: Apache-2.0
// The command line of a test program: long options, each with the place that it fills.
//
//     if (!read_options(argc, argv, {number("count", settings.count), flag("list",
//     settings.list)}))
#pragma once

#include <getopt.h>

#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

namespace test_tools {

struct LongOption {
    const char* name;
    bool has_value;
    /// Gets the value, empty for an option without one; false when it cannot be meant.
    std::function<bool(const char* value)> take;
};

/// A whole number, `least` or more.
template <typename Number>
LongOption number(const char* name, Number& target, int least = 1) {
    return {name, true, [&target, least](const char* value) {
                const int given = std::atoi(value);
                target = static_cast<Number>(given);
                return given >= least;
            }};
}

inline LongOption text(const char* name, std::string& target) {
    return {name, true, [&target](const char* value) {
                target = value;
                return true;
            }};
}

inline LongOption flag(const char* name, bool& target) {
    return {name, false, [&target](const char* /*value*/) {
                target = true;
                return true;
            }};
}

/// False when a word is none of these options, or an option cannot be meant.
inline bool read_options(int argc, char* argv[], const std::vector<LongOption>& options) {
    std::vector<option> known;
    known.reserve(options.size() + 1);
    for (const LongOption& one : options) {
        known.push_back({one.name, one.has_value ? required_argument : no_argument, nullptr, 0});
    }
    known.push_back({nullptr, 0, nullptr, 0});
    int index = 0;
    for (int found = getopt_long(argc, argv, "", known.data(), &index); found != -1;
         found = getopt_long(argc, argv, "", known.data(), &index)) {
        const bool understood = found == 0;
        if (!understood ||
            !options.at(static_cast<std::size_t>(index)).take(optarg == nullptr ? "" : optarg)) {
            return false;
        }
    }
    return optind == argc;
}

} // namespace test_tools

// SPDX-License-Identifier: Apache-2.0
// The options of the command line. The manual page tells what each of them is for.
#pragma once

#include "model/limits.hpp"
#include "program/identity_options.hpp"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace wivex::report {

struct Options {
    /// A saved console; empty or "-": standard input.
    std::string console;
    std::string out;
    std::string mode;
    std::uint32_t iterations = 0;
    int refresh = 60;
    IdentityOptions identity;
    bool live = false;
    bool quiet = false;
    bool saved = false;
    bool check = false;
    /// As they were given, and what they say together.
    std::vector<std::string> limit_texts;
    std::string limits_file;
    std::vector<Limit> limits;
    /// Two files to compare; empty: none.
    std::vector<std::string> compare;

    bool reads_file() const {
        return !console.empty() && console != "-";
    }
};

/// Reads the command line. Nothing when the program is to end at once: it has printed its help, or
/// what is wrong, and `status` is its exit status.
std::optional<Options> read_options(int argc, char** argv, int& status);

} // namespace wivex::report

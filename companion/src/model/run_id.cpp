// SPDX-License-Identifier: Apache-2.0
#include "model/run_id.hpp"

#include "model/identity.hpp"

namespace wivex::report {

std::string run_id(const Log& log, const Run& run) {
    constexpr std::string_view separator("\0", 1);
    const Identity& identity = log.identity;
    Digest digest;
    const auto add = [&](std::string_view text) {
        digest.add(text);
        digest.add(separator);
    };
    add("run 1");
    add(hexadecimal(run.lines_digest));
    add(std::to_string(run.twins_before));
    add(identity.serial.empty() ? "mac" : "serial");
    add(identity.serial.empty() ? identity.mac : identity.serial);
    add(std::to_string(identity.attempt));
    return hexadecimal(digest.value());
}

} // namespace wivex::report

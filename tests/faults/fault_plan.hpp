// SPDX-License-Identifier: Apache-2.0
// Which calls fail how: everything that a mode's calls can give, or a choice of it.
#pragma once

#include "call_log.hpp"
#include "error_numbers.hpp"
#include "fault_modes.hpp"

#include <string>
#include <vector>

namespace faults {

struct Fault {
    const Mode* mode = nullptr;
    Call call;
    Failure failure;
};

/// Every failure of every call.
std::vector<Fault> all_faults(const Mode& mode, const std::vector<Call>& calls);

/// So many of them, drawn from the seed, in their order; all when `count` is 0 or not smaller.
std::vector<Fault> choose(std::vector<Fault> faults, std::size_t count, unsigned seed);

/// What the tracer is told: "-e inject=openat:error=EMFILE:when=7".
std::string tracer_options(const Fault& fault);

/// For a person: "w: openat 7 (AT_FDCWD, "/root/...) in write_result_file: error=EMFILE".
std::string description(const Fault& fault);

} // namespace faults

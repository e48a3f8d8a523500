// SPDX-License-Identifier: Apache-2.0
// The attempts of a unit, made of its runs. Defined here and nowhere else: an attempt has passed
// only when all its runs have; a first attempt that nobody has seen has not.
#pragma once

#include "common/moment.hpp"
#include "model/row.hpp"

#include <span>
#include <string>
#include <vector>

namespace wivex::line {

/// What of a run decides about attempts.
struct RunKey {
    std::int64_t run_no = 0;
    std::optional<std::int64_t> attempt;
    std::string report_id;
    bool passed = false;
    std::string cause;
    std::string station;
    std::string firmware;
    std::optional<Moment> began;
};

struct Attempt {
    /// As the station counts; nothing when it does not.
    std::optional<std::int64_t> number;
    bool passed = true;
    /// Of the first run that did not pass.
    std::string cause;
    std::string station;
    std::optional<Moment> began;
    /// Places in the list of runs, in order.
    std::vector<std::size_t> runs;
};

/// The attempts in their order: those with a number by it, then those without by time.
std::vector<Attempt> attempts_of(std::span<const RunKey> runs);

/// The cause of a unit whose lowest attempt is not the first.
constexpr std::string_view unseen_first_attempt = "first-attempt-not-seen";

/// The first attempt as yields count it: the first of the list, unless its number tells that the
/// true first one is missing: then one that has not passed, for that reason.
Attempt first_attempt(std::span<const Attempt> attempts);

} // namespace wivex::line

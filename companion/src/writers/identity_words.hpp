// SPDX-License-Identifier: Apache-2.0
// The identity of a report in words that several writers use.
#pragma once

#include "model/identity.hpp"
#include "model/run.hpp"

#include <string>
#include <utility>
#include <vector>

namespace wivex::report {

/// Every member that is known, with its name for people, in the order in which it is shown.
std::vector<std::pair<std::string, std::string>> known_facts(const Log& log);

/// When the run began, with its zone where that is known; may be empty.
std::string began_words(const Run& run);

/// What is said of the times of a run that cannot simply be trusted; may be empty.
std::string zone_words(const Run& run);

} // namespace wivex::report

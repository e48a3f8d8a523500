// SPDX-License-Identifier: Apache-2.0
// The parts of run.json that say which device it was, and when.
#pragma once

#include "model/run.hpp"

#include <nlohmann/json.hpp>

namespace wivex::report {

/// The member `identity` of the document.
nlohmann::ordered_json json_identity(const Log& log);

/// The members of a run that tell it from all others: its id, its begin and its end.
nlohmann::ordered_json json_of_run(const Log& log, const Run& run);

} // namespace wivex::report

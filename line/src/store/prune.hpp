// SPDX-License-Identifier: Apache-2.0
// Forgets the details of old runs. The runs themselves stay, so that every count stays as it was
// and a report that comes again is still known.
#pragma once

#include "store/database.hpp"

namespace wivex::line {

struct Pruned {
    std::int64_t runs = 0;
};

/// Of the runs that began before `moment`, and of those without a date that were added before it.
StoreResult prune(Database& database, std::int64_t moment, Pruned& pruned);

} // namespace wivex::line

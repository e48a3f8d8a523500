// SPDX-License-Identifier: Apache-2.0
// Writes the pages of the site from the database.
#pragma once

#include "store/database.hpp"

#include <string>

namespace wivex::line {

struct SiteOptions {
    std::string out;
    std::int64_t now = 0;
    std::size_t units = 2000;
};

struct SiteResult {
    StoreResult store;
    /// What could not be written; empty when all was.
    std::string problem;
    std::size_t pages = 0;
};

SiteResult write_site(Database& database, const SiteOptions& options);

} // namespace wivex::line

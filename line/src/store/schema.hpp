// SPDX-License-Identifier: Apache-2.0
// The tables and views of the database, and the steps from one version of them to the next.
#pragma once

#include <soci/soci.h>

#include <set>
#include <string>
#include <vector>

namespace wivex::line {

/// The version that this program reads and writes.
int newest_schema();

/// Brings the database to `version`, step by step, inside the caller's transaction; the newest
/// unless a test asks for an older one. Throws when it is newer than this program.
void bring_up_to_date(soci::session& session, bool postgresql, int version = newest_schema());

/// Whether the database has the newest version already. Throws when it has none at all.
bool is_up_to_date(soci::session& session);

/// Those of them that are views.
const std::set<std::string>& exported_views();

/// The names of tables and views that can be exported, in order.
const std::vector<std::string>& exported_tables();

} // namespace wivex::line

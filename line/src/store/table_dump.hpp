// SPDX-License-Identifier: Apache-2.0
// Any table or view, row by row.
#pragma once

#include "store/database.hpp"

#include <functional>
#include <string>
#include <vector>

namespace wivex::line {

/// Calls `head` with the names of the columns of `table`, then `each` with the values of each row
/// until it returns false. `table` is one of exported_tables().
StoreResult dump_table(Database& database, const std::string& table,
                       const std::function<void(const std::vector<std::string>&)>& head,
                       const std::function<bool(const std::vector<Value>&)>& each);

} // namespace wivex::line

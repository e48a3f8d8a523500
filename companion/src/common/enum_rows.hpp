// SPDX-License-Identifier: Apache-2.0
// Tables with one row for each value of an enumeration, in the order of the values.
#pragma once

#include <cstddef>

namespace wivex::report {

/// The row of `value`; the table has to reach as far as the enumeration.
template <typename Table, typename Value>
const auto& row_at(const Table& table, Value value) {
    return table.at(static_cast<std::size_t>(value));
}

} // namespace wivex::report

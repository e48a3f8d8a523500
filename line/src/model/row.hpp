// SPDX-License-Identifier: Apache-2.0
// Values of a database, and rows of them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace wivex::line {

using Text = std::optional<std::string>;
using Figure = std::optional<double>;

/// A value of a column; the first alternative is null.
using Value = std::variant<std::monostate, std::string, std::int64_t, double>;

/// The values of the columns of a table, in their order.
using Row = std::vector<Value>;

/// A value that may be missing, as a column takes it.
template <typename Type>
Value value_of(const std::optional<Type>& optional) {
    return optional ? Value(*optional) : Value();
}

inline bool is_null(const Value& value) {
    return value.index() == 0;
}

/// Null and other types read as empty.
inline const std::string& text_in(const Value& value) {
    static const std::string none;
    const auto* const text = std::get_if<std::string>(&value);
    return text == nullptr ? none : *text;
}

/// Null and other types read as 0.
inline std::int64_t count_in(const Value& value) {
    const auto* const count = std::get_if<std::int64_t>(&value);
    return count == nullptr ? 0 : *count;
}

} // namespace wivex::line

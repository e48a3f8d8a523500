// SPDX-License-Identifier: Apache-2.0
// One prepared statement. Everything that is not the program's own text is bound, never pasted.
// Errors of the database are exceptions inside this room; Database::transact ends them.
#pragma once

#include <soci/soci.h>

#include <array>
#include <cstdint>
#include <deque>
#include <initializer_list>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>

namespace wivex::line {

enum class Kind : std::uint8_t { text, count, figure };

/// A value of a column; the first alternative is null.
using Value = std::variant<std::monostate, std::string, std::int64_t, double>;

/// A value that may be missing, as a column takes it.
template <typename Type>
Value value_of(const std::optional<Type>& optional) {
    return optional ? Value(*optional) : Value();
}

class Statement {
public:
    /// `parameters` and `results` tell the kinds, one letter each: t text, c count, f figure. The
    /// parameters stand in `sql` as :a, :b, ... :z, :A, ... in their order.
    Statement(soci::session& session, const std::string& sql, std::string_view parameters,
              std::string_view results = {});

    /// Runs it, for a statement that gives one row or none. True when there is one.
    bool run(std::span<const Value> values);
    bool run(std::initializer_list<Value> values) {
        return run(std::span(values.begin(), values.size()));
    }
    /// Runs it, for a statement that gives many rows: true when there is a first.
    bool begin(std::span<const Value> values);
    bool begin(std::initializer_list<Value> values) {
        return begin(std::span(values.begin(), values.size()));
    }
    /// Goes on to the next row of results.
    bool next();

    bool is_null(std::size_t column) const;
    /// Of the present row; null reads as empty or 0.
    const std::string& text(std::size_t column) const;
    std::int64_t count(std::size_t column) const;
    double figure(std::size_t column) const;
    std::optional<std::string> optional_text(std::size_t column) const;
    std::optional<std::int64_t> optional_count(std::size_t column) const;
    std::optional<double> optional_figure(std::size_t column) const;

private:
    struct Cell {
        Kind kind = Kind::text;
        std::string text;
        long long count = 0;
        double figure = 0;
        soci::indicator indicator = soci::i_null;
    };

    soci::statement statement_;
    std::deque<Cell> parameters_;
    std::deque<Cell> results_;
};

} // namespace wivex::line

// SPDX-License-Identifier: Apache-2.0
// One prepared statement. Everything that is not the program's own text is bound, never pasted.
// Errors of the database are exceptions inside this room; Database::transact ends them.
#pragma once

#include "model/row.hpp"
#include "model/tables.hpp"

#include <soci/soci.h>

#include <deque>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>

namespace wivex::line {

class Statement {
public:
    /// `parameters` and `results` tell the kinds, one letter each: t text, c count, f figure. The
    /// parameters stand in `sql` in their order, each under a name of its own.
    Statement(soci::session& session, const std::string& sql, std::string_view parameters,
              std::string_view results = {});

    /// The next value of the parameter at `place`.
    void set(std::size_t place, const Value& value);
    /// Runs it with all that was set: true when there is a first row of results.
    bool begin();
    /// Goes on to the next row of results.
    bool next();

    /// All at once. For a statement that gives many rows: true when there is a first.
    bool begin(std::initializer_list<Value> values);
    /// For a statement that gives one row or none: true when there is one.
    bool run(std::initializer_list<Value> values);

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

    template <typename Exchange>
    void add_cell(std::deque<Cell>& cells, char letter, Exchange exchange);

    soci::statement statement_;
    std::deque<Cell> parameters_;
    std::deque<Cell> results_;
};

} // namespace wivex::line

// SPDX-License-Identifier: Apache-2.0
// Puts rows into a table, many with one statement: a database at the other end of a network is
// asked once and not once a row.
#pragma once

#include "store/statement.hpp"

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace wivex::line {

class TableWriter {
public:
    /// `returning` names columns, all of them texts, that the database tells of each new row.
    TableWriter(soci::session& session, const Table& table, std::string returning = {},
                std::string_view results = {});

    /// Adds those of `rows` whose key is not there yet. `each` hears of them.
    void write(
        const std::vector<Row>& rows,
        const std::function<void(const Statement&)>& each = [](const Statement&) {});

private:
    Statement& statement_for(std::size_t rows);

    soci::session& session_;
    const Table& table_;
    std::string returning_;
    std::string results_;
    /// By the number of rows that they add.
    std::map<std::size_t, Statement> statements_;
};

} // namespace wivex::line

// SPDX-License-Identifier: Apache-2.0
#include "store/table_writer.hpp"

#include <algorithm>
#include <utility>

namespace wivex::line {

namespace {

constexpr std::size_t most_rows = 32;

char letter_of(Kind kind) {
    return kind == Kind::text ? 't' : kind == Kind::figure ? 'f' : 'c';
}

std::string parameters_of(std::size_t row, std::size_t columns) {
    std::string text = "(";
    for (std::size_t i = 0; i < columns; ++i) {
        text += (i == 0 ? ":p" : ", :p") + std::to_string(row * columns + i);
    }
    return text + ")";
}

} // namespace

TableWriter::TableWriter(soci::session& session, const Table& table, std::string returning,
                         std::string_view results)
    : session_(session), table_(table), returning_(std::move(returning)), results_(results) {}

Statement& TableWriter::statement_for(std::size_t rows) {
    const auto found = statements_.find(rows);
    if (found != statements_.end()) {
        return found->second;
    }
    std::string names;
    std::string kinds;
    for (const Column& column : table_.columns) {
        names += (names.empty() ? "" : ", ") + std::string(column.name);
    }
    std::string values;
    for (std::size_t row = 0; row < rows; ++row) {
        values += (row == 0 ? "" : ", ") + parameters_of(row, table_.columns.size());
        for (const Column& column : table_.columns) {
            kinds += letter_of(column.kind);
        }
    }
    const std::string sql = "insert into " + std::string(table_.name) + " (" + names + ") values " +
                            values + " on conflict (" + std::string(table_.key) + ") do nothing" +
                            (returning_.empty() ? "" : " returning " + returning_);
    return statements_
        .emplace(std::piecewise_construct, std::forward_as_tuple(rows),
                 std::forward_as_tuple(session_, sql, kinds, results_))
        .first->second;
}

void TableWriter::write(const std::vector<Row>& rows,
                        const std::function<void(const Statement&)>& each) {
    for (std::size_t done = 0; done < rows.size();) {
        const std::size_t count = std::min(rows.size() - done, most_rows);
        Statement& statement = statement_for(count);
        for (std::size_t i = 0; i < count; ++i) {
            for (std::size_t column = 0; column < table_.columns.size(); ++column) {
                statement.set(i * table_.columns.size() + column, rows[done + i][column]);
            }
        }
        for (bool row = statement.begin(); row; row = statement.next()) {
            each(statement);
        }
        done += count;
    }
}

} // namespace wivex::line

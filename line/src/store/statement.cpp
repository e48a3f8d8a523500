// SPDX-License-Identifier: Apache-2.0
#include "store/statement.hpp"

namespace wivex::line {

template <typename Exchange>
void Statement::add_cell(std::deque<Cell>& cells, char letter, Exchange exchange) {
    Cell& cell = cells.emplace_back();
    if (letter == 't') {
        exchange(cell.text, cell.indicator);
    } else if (letter == 'c') {
        cell.kind = Kind::count;
        exchange(cell.count, cell.indicator);
    } else {
        cell.kind = Kind::figure;
        exchange(cell.figure, cell.indicator);
    }
}

Statement::Statement(soci::session& session, const std::string& sql, std::string_view parameters,
                     std::string_view results)
    : statement_(session) {
    for (const char letter : results) {
        add_cell(results_, letter, [this](auto& value, soci::indicator& indicator) {
            statement_.exchange(soci::into(value, indicator));
        });
    }
    // Bound by place: the library looks names up each time.
    for (const char letter : parameters) {
        add_cell(parameters_, letter, [this](auto& value, soci::indicator& indicator) {
            statement_.exchange(soci::use(value, indicator));
        });
    }
    statement_.alloc();
    statement_.prepare(sql);
    statement_.define_and_bind();
}

void Statement::set(std::size_t place, const Value& value) {
    Cell& cell = parameters_.at(place);
    cell.indicator = line::is_null(value) ? soci::i_null : soci::i_ok;
    if (const auto* const text = std::get_if<std::string>(&value)) {
        cell.text = *text;
    } else if (const auto* const count = std::get_if<std::int64_t>(&value)) {
        cell.count = *count;
    } else if (const auto* const figure = std::get_if<double>(&value)) {
        cell.figure = *figure;
    }
}

bool Statement::begin() {
    return statement_.execute(true);
}

bool Statement::next() {
    return statement_.fetch();
}

bool Statement::begin(std::initializer_list<Value> values) {
    if (values.size() != parameters_.size()) {
        throw soci::soci_error("a statement got the wrong number of values");
    }
    std::size_t place = 0;
    for (const Value& value : values) {
        set(place++, value);
    }
    return begin();
}

bool Statement::run(std::initializer_list<Value> values) {
    const bool found = begin(values);
    // Ends it: a statement that is left open would keep the transaction from its end.
    while (found && next()) {
    }
    return found;
}

bool Statement::is_null(std::size_t column) const {
    return results_.at(column).indicator == soci::i_null;
}

const std::string& Statement::text(std::size_t column) const {
    static const std::string none;
    return is_null(column) ? none : results_.at(column).text;
}

std::int64_t Statement::count(std::size_t column) const {
    return is_null(column) ? 0 : results_.at(column).count;
}

double Statement::figure(std::size_t column) const {
    return is_null(column) ? 0 : results_.at(column).figure;
}

std::optional<std::string> Statement::optional_text(std::size_t column) const {
    return is_null(column) ? std::nullopt : std::optional(text(column));
}

std::optional<std::int64_t> Statement::optional_count(std::size_t column) const {
    return is_null(column) ? std::nullopt : std::optional(count(column));
}

std::optional<double> Statement::optional_figure(std::size_t column) const {
    return is_null(column) ? std::nullopt : std::optional(figure(column));
}

} // namespace wivex::line

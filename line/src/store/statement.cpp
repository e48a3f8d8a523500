// SPDX-License-Identifier: Apache-2.0
#include "store/statement.hpp"

namespace wivex::line {

namespace {

Kind kind_of(char letter) {
    return letter == 't' ? Kind::text : letter == 'c' ? Kind::count : Kind::figure;
}

std::string name_of_parameter(std::size_t index) {
    constexpr std::string_view names = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";
    return {names.at(index)};
}

} // namespace

Statement::Statement(soci::session& session, const std::string& sql, std::string_view parameters,
                     std::string_view results)
    : statement_(session) {
    for (const char letter : results) {
        Cell& cell = results_.emplace_back();
        cell.kind = kind_of(letter);
        switch (cell.kind) {
        case Kind::text:
            statement_.exchange(soci::into(cell.text, cell.indicator));
            break;
        case Kind::count:
            statement_.exchange(soci::into(cell.count, cell.indicator));
            break;
        case Kind::figure:
            statement_.exchange(soci::into(cell.figure, cell.indicator));
            break;
        }
    }
    for (const char letter : parameters) {
        const std::string name = name_of_parameter(parameters_.size());
        Cell& cell = parameters_.emplace_back();
        cell.kind = kind_of(letter);
        switch (cell.kind) {
        case Kind::text:
            statement_.exchange(soci::use(cell.text, cell.indicator, name));
            break;
        case Kind::count:
            statement_.exchange(soci::use(cell.count, cell.indicator, name));
            break;
        case Kind::figure:
            statement_.exchange(soci::use(cell.figure, cell.indicator, name));
            break;
        }
    }
    statement_.alloc();
    statement_.prepare(sql);
    statement_.define_and_bind();
}

bool Statement::run(std::span<const Value> values) {
    const bool found = begin(values);
    // Ends it: a statement that is left open would keep the transaction from its end.
    while (found && next()) {
    }
    return found;
}

bool Statement::begin(std::span<const Value> values) {
    if (values.size() != parameters_.size()) {
        throw soci::soci_error("a statement got the wrong number of values");
    }
    for (std::size_t i = 0; i < values.size(); ++i) {
        Cell& cell = parameters_[i];
        cell.indicator = values[i].index() == 0 ? soci::i_null : soci::i_ok;
        if (const auto* const text = std::get_if<std::string>(&values[i])) {
            cell.text = *text;
        } else if (const auto* const count = std::get_if<std::int64_t>(&values[i])) {
            cell.count = *count;
        } else if (const auto* const figure = std::get_if<double>(&values[i])) {
            cell.figure = *figure;
        }
    }
    return statement_.execute(true);
}

bool Statement::next() {
    return statement_.fetch();
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

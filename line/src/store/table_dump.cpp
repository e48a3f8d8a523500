// SPDX-License-Identifier: Apache-2.0
#include "store/table_dump.hpp"

#include "store/schema.hpp"

#include <algorithm>
#include <array>
#include <charconv>

namespace wivex::line {

namespace {

using Names = std::vector<std::string>;

// SQLite tells no type of what a view computes; all of that is whole numbers, but for these.
constexpr auto computed_texts =
    std::to_array<std::string_view>({"attempt_key", "phase", "station"});

Value untyped(const std::string& name, const std::string& text) {
    std::int64_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    const bool is_text = std::ranges::find(computed_texts, name) != computed_texts.end();
    return is_text || error != std::errc() || stop != end ? Value(text) : Value(number);
}

Value value_at(const soci::row& row, std::size_t column, bool computed) {
    if (row.get_indicator(column) == soci::i_null) {
        return {};
    }
    switch (row.get_properties(column).get_data_type()) {
    case soci::dt_integer:
        return std::int64_t{row.get<int>(column)};
    case soci::dt_long_long:
        return static_cast<std::int64_t>(row.get<long long>(column));
    case soci::dt_unsigned_long_long:
        return static_cast<std::int64_t>(row.get<unsigned long long>(column));
    case soci::dt_double:
        return row.get<double>(column);
    default:
        break;
    }
    const auto text = row.get<std::string>(column);
    return computed ? untyped(row.get_properties(column).get_name(), text) : Value(text);
}

Names names_of(const soci::row& row) {
    Names names;
    for (std::size_t i = 0; i < row.size(); ++i) {
        names.push_back(row.get_properties(i).get_name());
    }
    return names;
}

class Dump {
public:
    Dump(soci::session& session, std::string sql, bool computed)
        : session_(session), sql_(std::move(sql)), computed_(computed) {}

    // One run of the statement; the number of its rows, or -1 when nobody wants more.
    long pass(const std::function<void(const Names&)>& head,
              const std::function<bool(const std::vector<Value>&)>& each) {
        soci::row row;
        soci::statement statement = (session_.prepare << sql_, soci::into(row));
        bool found = statement.execute(true);
        head(names_of(row));
        long rows = 0;
        std::vector<Value> values;
        for (; found; found = statement.fetch(), ++rows) {
            values.clear();
            for (std::size_t i = 0; i < row.size(); ++i) {
                values.push_back(value_at(row, i, computed_));
            }
            if (!each(values)) {
                return -1;
            }
        }
        return rows;
    }

private:
    soci::session& session_;
    std::string sql_;
    bool computed_;
};

} // namespace

StoreResult dump_table(Database& database, const std::string& table,
                       const std::function<void(const Names&)>& head,
                       const std::function<bool(const std::vector<Value>&)>& each) {
    return database.read([&](soci::session& session) {
        const std::string all = "select * from " + table;
        if (!database.is_postgresql()) {
            const bool is_view = exported_views().contains(table);
            Dump(session, all, is_view).pass(head, each);
            return;
        }
        // PostgreSQL would send all rows at once.
        session << "declare dump no scroll cursor for " + all;
        Dump dump(session, "fetch forward 5000 from dump", false);
        long rows = dump.pass(head, each);
        while (rows > 0) {
            rows = dump.pass([](const Names&) {}, each);
        }
    });
}

} // namespace wivex::line

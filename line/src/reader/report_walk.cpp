// SPDX-License-Identifier: Apache-2.0
#include "reader/report_walk.hpp"

#include <cmath>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace wivex::line {

namespace {

constexpr double most_count = 1e12;
// No figure of a run comes near; a larger one would spoil every sum.
constexpr double most_figure = 1e9;
constexpr std::size_t most_runs = 256;
constexpr std::size_t most_parts = 256;
constexpr std::size_t most_notes = 128;
constexpr std::string_view facts = "/identity/facts";
constexpr std::string_view warning = "/identity/warnings/*";

constexpr auto failure_columns = std::to_array<Column>({
    {"cause", Kind::text, "/runs/*/failures/*/cause"},
    {"warning", Kind::flag, "/runs/*/failures/*/warning"},
});
constexpr auto phase_columns = std::to_array<Column>({
    {"phase", Kind::text, "/runs/*/phases/*/phase", true},
    {"mean", Kind::figure, "/runs/*/phases/*/seconds/mean"},
});

constexpr Table document_table{"document", "", document_columns, ""};
constexpr Table evidence_table{"evidence", "", evidence_columns, ""};
constexpr Table failures_table{"failures", "/runs/*/failures/*", failure_columns, ""};
constexpr Table phases_table{"phases", "/runs/*/phases/*", phase_columns, ""};

constexpr std::array<const Table*, 7> tables{&document_table, &evidence_table, &runs_table,
                                             &causes_table,   &limits_table,   &failures_table,
                                             &phases_table};

struct Place {
    const Table* table;
    std::size_t column;
};

const std::unordered_map<std::string_view, Place>& places() {
    static const auto map = [] {
        std::unordered_map<std::string_view, Place> made;
        for (const Table* const table : tables) {
            for (std::size_t i = 0; i < table->columns.size(); ++i) {
                made.try_emplace(table->columns[i].path, Place{table, i});
            }
        }
        made.erase("");
        return made;
    }();
    return map;
}

// Every path of a column, and all that lead to them.
const std::unordered_set<std::string_view>& ways() {
    static const auto set = [] {
        std::unordered_set<std::string_view> made{"/identity/warnings"};
        for (const auto& [path, place] : places()) {
            for (std::size_t end = path.size(); end != std::string_view::npos && end != 0;
                 end = path.rfind('/', end - 1)) {
                made.insert(path.substr(0, end));
            }
        }
        return made;
    }();
    return set;
}

const Place* find(std::string_view path) {
    const auto found = places().find(path);
    return found == places().end() ? nullptr : &found->second;
}

const Column& column_of(const Place& place) {
    return place.table->columns[place.column];
}

std::string_view objection(Kind kind) {
    switch (kind) {
    case Kind::text:
        return "is no text";
    case Kind::count:
        return "is no whole number from 0 on";
    case Kind::figure:
        return "is no number, or beyond all bounds";
    default:
        return "is neither true nor false";
    }
}

// Databases refuse the first, terminals and tables suffer from the rest.
bool has_control(std::string_view text) {
    return std::ranges::any_of(text, [](char letter) {
        const auto byte = static_cast<unsigned char>(letter);
        return byte < 0x20 || byte == 0x7f;
    });
}

Row empty_row(const Table& table) {
    return Row(table.columns.size());
}

std::size_t index_of(const Table& table) {
    return static_cast<std::size_t>(std::ranges::find(tables, &table) - tables.begin());
}

} // namespace

bool is_name(std::string_view text) {
    return !text.empty() && text.size() <= 48 && std::ranges::all_of(text, [](char letter) {
        return (letter >= 'a' && letter <= 'z') || (letter >= '0' && letter <= '9') ||
               letter == '-';
    });
}

ReportWalk::ReportWalk(Walked& walked) : walked_(walked) {
    walked_.document = empty_row(document_table);
    walked_.identity = empty_row(runs_table);
    for (const Table* const table : tables) {
        open_.push_back(empty_row(*table));
    }
}

bool ReportWalk::complain(std::string_view path, std::string_view what) {
    return refuse(std::string(path.substr(1)) + " " + std::string(what));
}

Row& ReportWalk::place_for(const Table& table, std::string_view path) {
    if (&table == &document_table) {
        return walked_.document;
    }
    return path.starts_with("/identity/") ? walked_.identity : open_[index_of(table)];
}

bool ReportWalk::wants(std::string_view path) {
    return ways().contains(path) || path.starts_with(facts);
}

bool ReportWalk::take_number(std::string_view path, double value) {
    const Place* const place = find(path);
    if (place == nullptr) {
        return take_other(path);
    }
    const Kind kind = column_of(*place).kind;
    Value& target = place_for(*place->table, path)[place->column];
    if (kind == Kind::count && value >= 0 && value <= most_count && value == std::floor(value)) {
        target = static_cast<std::int64_t>(value);
        return true;
    }
    if (kind == Kind::figure && std::fabs(value) <= most_figure) {
        target = value;
        return true;
    }
    return complain(path, objection(kind));
}

bool ReportWalk::take_text(std::string_view path, std::string_view text) {
    const Place* const place = find(path);
    if (place == nullptr) {
        return take_note(path, text);
    }
    const Column& column = column_of(*place);
    if (column.kind != Kind::text) {
        return complain(path, objection(column.kind));
    }
    if (text.size() > column.longest) {
        return complain(path, "is too long");
    }
    if (has_control(text)) {
        return complain(path, "holds control characters");
    }
    place_for(*place->table, path)[place->column] =
        text.empty() ? Value() : Value(std::string(text));
    return true;
}

bool ReportWalk::take_flag(std::string_view path, bool value) {
    const Place* const place = find(path);
    if (place == nullptr) {
        return take_other(path);
    }
    if (column_of(*place).kind != Kind::flag) {
        return complain(path, objection(column_of(*place).kind));
    }
    place_for(*place->table, path)[place->column] = std::int64_t{value ? 1 : 0};
    return true;
}

// Where a row is expected stands something else.
bool ReportWalk::take_other(std::string_view path) {
    const bool is_row =
        std::ranges::any_of(tables, [&](const Table* table) { return table->path == path; });
    return path.empty() || !is_row || complain(path, "is no object");
}

// What does not fit is left out: notes are for people, and nothing counts them.
bool ReportWalk::take_note(std::string_view path, std::string_view text) {
    const bool is_warning = path == warning;
    if (!is_warning && !path.starts_with(facts)) {
        return take_other(path);
    }
    if (walked_.notes.size() == most_notes) {
        return true;
    }
    const std::string key = is_warning ? std::to_string(walked_.notes.size()) : std::string(name());
    if (key.size() <= 256 && key.find('\0') == std::string::npos) {
        std::string words(text);
        std::ranges::replace(words, '\0', ' ');
        walked_.notes.push_back({{}, is_warning ? "warning" : "fact", key, std::move(words)});
    }
    return true;
}

bool ReportWalk::end_of(std::string_view path) {
    for (std::size_t i = 0; i < tables.size(); ++i) {
        if (path.empty() || tables.at(i)->path != path) {
            continue;
        }
        if (!take_row(*tables.at(i), std::exchange(open_[i], empty_row(*tables.at(i))))) {
            return false;
        }
    }
    return true;
}

bool ReportWalk::take_row(const Table& table, Row row) {
    for (std::size_t i = 0; i < row.size(); ++i) {
        if (table.columns[i].required && is_null(row[i])) {
            return complain(table.columns[i].path, "is missing");
        }
    }
    if (&table == &runs_table) {
        Row evidence = std::exchange(open_[index_of(evidence_table)], empty_row(evidence_table));
        evidence[place_of(evidence_columns, "told_cause")] = std::exchange(told_cause_, {});
        run_.row = std::move(row);
        walked_.runs.push_back({std::exchange(run_, {}), std::move(evidence)});
        return walked_.runs.size() <= most_runs || complain("/runs", "are too many");
    }
    if (&table == &phases_table) {
        take_phase(row);
    } else if (&table == &failures_table) {
        take_failure(row);
    } else {
        std::vector<Row>& rows = &table == &causes_table ? run_.causes : run_.limits;
        if (rows.size() < most_parts) {
            rows.push_back(std::move(row));
        }
    }
    return true;
}

void ReportWalk::take_failure(const Row& failure) {
    const std::string& cause = text_in(failure[0]);
    if (told_cause_.empty() && is_name(cause) && failure[1] == Value(std::int64_t{0})) {
        told_cause_ = cause;
    }
}

void ReportWalk::take_phase(const Row& phase) {
    const Place* const place = find("/runs/*/phases/" + text_in(phase[0]));
    if (place != nullptr) {
        open_[index_of(runs_table)][place->column] = phase[1];
    }
}

} // namespace wivex::line

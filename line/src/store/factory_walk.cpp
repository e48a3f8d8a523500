// SPDX-License-Identifier: Apache-2.0
#include "store/factory_walk.hpp"

#include "model/tables.hpp"
#include "store/run_key.hpp"

namespace wivex::line {

namespace {

constexpr std::int64_t rows_at_once = 20000;
constexpr std::int64_t most_groups = 2000;

Sums sums_from(const Statement& row, std::size_t column) {
    return {row.count(column), row.figure(column + 1), row.figure(column + 2),
            row.figure(column + 3), row.figure(column + 4)};
}

std::string sums_of(const std::string& column) {
    return "count(" + column + "), sum(" + column + "), sum(" + column + " * " + column +
           "), min(" + column + "), max(" + column + ")";
}

} // namespace

void walk_units(soci::session& session, Factory& factory) {
    Statement rows(session,
                   "select " + std::string(run_key_columns) +
                       " from runs where (unit_no, run_no) > (:a, :b) "
                       "order by unit_no, run_no limit :c",
                   "ccc", run_key_kinds);
    std::vector<RunKey> runs;
    std::int64_t unit = 0;
    std::int64_t last = 0;
    for (bool more = true; more;) {
        more = false;
        for (bool row = rows.begin({unit, last, rows_at_once}); row; row = rows.next()) {
            more = true;
            if (rows.count(1) != unit && !runs.empty()) {
                factory.take(unit, runs);
                runs.clear();
            }
            unit = rows.count(1);
            last = rows.count(0);
            runs.push_back(run_key(rows));
        }
    }
    if (!runs.empty()) {
        factory.take(unit, runs);
    }
    factory.finish();
}

std::vector<MeasureGroup> measure_groups(soci::session& session, Moment since) {
    std::string columns;
    std::string kinds = "tt";
    for (const Measure& measure : measures) {
        columns += ", " + sums_of(std::string(measure.column));
        kinds += "cffff";
    }
    Statement rows(session,
                   "select coalesce(station, ''), coalesce(firmware, '')" + columns +
                       " from runs where began_utc_s >= :a group by 1, 2 order by 1, 2 limit :b",
                   "cc", kinds);
    std::vector<MeasureGroup> groups;
    for (bool row = rows.begin({since, most_groups}); row; row = rows.next()) {
        MeasureGroup& group = groups.emplace_back();
        group.station = rows.text(0);
        group.firmware = rows.text(1);
        for (std::size_t i = 0; i < measures.size(); ++i) {
            group.sums.push_back(sums_from(rows, 2 + 5 * i));
        }
    }
    return groups;
}

std::vector<LimitGroup> limit_groups(soci::session& session, Moment since) {
    Statement rows(session,
                   "select name, comparison, limit_value, coalesce(unit, ''), "
                   "coalesce(station, ''), coalesce(firmware, ''), " +
                       sums_of("value") +
                       ", sum(case when run_limits.verdict = 'outside' then 1 else 0 end), "
                       "sum(case when run_limits.verdict = 'unknown' then 1 else 0 end) "
                       "from run_limits join runs on runs.run_no = run_limits.run_no "
                       "where began_utc_s >= :a group by 1, 2, 3, 4, 5, 6 "
                       "order by 1, 2, 3, 4, 5, 6 limit :b",
                   "cc", "ttftttcffffcc");
    std::vector<LimitGroup> groups;
    for (bool row = rows.begin({since, most_groups}); row; row = rows.next()) {
        groups.push_back({rows.text(0), rows.text(1), rows.figure(2), rows.text(3), rows.text(4),
                          rows.text(5), sums_from(rows, 6), rows.count(11), rows.count(12)});
    }
    return groups;
}

Doubts doubts(soci::session& session) {
    Doubts found;
    Statement quarantined(session, "select count(*) from quarantine where named_serial is null", "",
                          "c");
    found.quarantined = quarantined.run({}) ? quarantined.count(0) : 0;
    Statement conflicts(session, "select count(*) from conflicts", "", "c");
    found.conflicts = conflicts.run({}) ? conflicts.count(0) : 0;
    Statement macs(session,
                   "select mac, count(*), min(unit_no) from unit_macs group by mac "
                   "having count(*) > 1 order by mac limit 50",
                   "", "tcc");
    for (bool row = macs.begin({}); row; row = macs.next()) {
        found.macs.emplace_back("MAC " + macs.text(0) + " is claimed by " +
                                    std::to_string(macs.count(1)) + " units",
                                macs.count(2));
    }
    Statement units(session,
                    "select (select serial from units where units.unit_no = unit_macs.unit_no), "
                    "count(*), unit_no from unit_macs group by unit_no having count(*) > 1 "
                    "order by unit_no desc limit 50",
                    "", "tcc");
    for (bool row = units.begin({}); row; row = units.next()) {
        found.macs.emplace_back("unit " + units.text(0) + " has " + std::to_string(units.count(1)) +
                                    " MACs",
                                units.count(2));
    }
    return found;
}

std::optional<Moment> newest_run(soci::session& session, Moment now) {
    Statement dated(session, "select max(began_utc_s) from runs where began_utc_s <= :a", "c", "c");
    return dated.run({now}) ? dated.optional_count(0) : std::nullopt;
}

} // namespace wivex::line

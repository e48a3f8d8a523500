// SPDX-License-Identifier: Apache-2.0
#include "store/unit_history.hpp"

#include "store/run_key.hpp"

namespace wivex::line {

namespace {

constexpr std::int64_t most_runs = 2000;

UnitRun run_of(const Statement& row) {
    UnitRun run;
    run.key = run_key(row);
    const std::size_t first = behind_run_key;
    run.verdict = row.text(first);
    run.limits_verdict = row.optional_text(first + 1);
    run.mode = row.text(first + 2);
    run.began_at = row.optional_text(first + 3);
    run.iterations = row.count(first + 4);
    run.iterations_passed = row.count(first + 5);
    run.throughput_mean = row.optional_figure(first + 6);
    run.signal_mean = row.optional_figure(first + 7);
    run.duration = row.optional_figure(first + 8);
    run.report_path = row.optional_text(first + 9);
    return run;
}

} // namespace

std::vector<Attempt> UnitHistory::attempts() const {
    std::vector<RunKey> keys;
    keys.reserve(runs.size());
    for (const UnitRun& run : runs) {
        keys.push_back(run.key);
    }
    return attempts_of(keys);
}

UnitReader::UnitReader(soci::session& session)
    : by_serial_(session, "select unit_no from units where serial = :a", "t", "c"),
      by_mac_(session, "select unit_no from unit_macs where mac = :a order by unit_no limit 20",
              "t", "c"),
      serial_(session, "select serial from units where unit_no = :a", "c", "t"),
      macs_(session, "select mac from unit_macs where unit_no = :a order by mac limit 200", "c",
            "t"),
      // One table a step: PostgreSQL joins whole tables as long as it has not counted new rows.
      others_(session,
              "select (select serial from units where units.unit_no = theirs.unit_no) "
              "from unit_macs as theirs where mac = :a and unit_no <> :b order by 1 limit 20",
              "tc", "t"),
      runs_(session,
            "select " + std::string(run_key_columns) +
                ", verdict, limits_verdict, mode, began_at, iterations, iterations_passed, "
                "throughput_mean_mbit_s, signal_mean_dbm, duration_s, report_path "
                "from runs where unit_no = :a order by run_no limit :b",
            "cc", std::string(run_key_kinds) + "ttttccffft"),
      run_count_(session, "select count(*) from runs where unit_no = :a", "c", "c"),
      conflicts_(session,
                 "select run_id, verdict, report_path, seen_utc_s from conflicts "
                 "where serial = :a order by conflict_no limit 200",
                 "t", "tttc") {}

Text UnitReader::serial(std::int64_t unit_no) {
    return serial_.run({unit_no}) ? serial_.optional_text(0) : std::nullopt;
}

bool UnitReader::read(std::int64_t unit_no, UnitHistory& unit) {
    unit = {};
    const Text found = serial(unit_no);
    if (!found) {
        return false;
    }
    unit.unit_no = unit_no;
    unit.serial = *found;
    for (bool row = macs_.begin({unit_no}); row; row = macs_.next()) {
        unit.macs.push_back({macs_.text(0), {}});
    }
    for (MacClaim& mac : unit.macs) {
        for (bool row = others_.begin({mac.mac, unit_no}); row; row = others_.next()) {
            mac.others.push_back(others_.text(0));
        }
    }
    for (bool row = runs_.begin({unit_no, most_runs}); row; row = runs_.next()) {
        unit.runs.push_back(run_of(runs_));
    }
    if (static_cast<std::int64_t>(unit.runs.size()) == most_runs && run_count_.run({unit_no})) {
        unit.runs_left_out = run_count_.count(0) - most_runs;
    }
    for (bool row = conflicts_.begin({unit.serial}); row; row = conflicts_.next()) {
        unit.conflicts.push_back(
            {conflicts_.text(0), conflicts_.text(1), conflicts_.text(2), conflicts_.count(3)});
    }
    return true;
}

std::vector<std::int64_t> UnitReader::find(const std::string& name) {
    std::vector<std::int64_t> found;
    if (by_serial_.run({name})) {
        found.push_back(by_serial_.count(0));
        return found;
    }
    for (bool row = by_mac_.begin({name}); row; row = by_mac_.next()) {
        found.push_back(by_mac_.count(0));
    }
    return found;
}

} // namespace wivex::line

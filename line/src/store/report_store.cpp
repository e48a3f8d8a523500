// SPDX-License-Identifier: Apache-2.0
#include "store/report_store.hpp"

#include "store/run_writers.hpp"

#include <ctime>
#include <map>
#include <set>

namespace wivex::line {

namespace {

// A row of `to` from the values of the columns of a run that have the same names.
Row same_columns(const Row& run, std::span<const Column> to) {
    Row row;
    for (const Column& column : to) {
        const auto* const found = std::ranges::find(run_columns, column.name, &Column::name);
        row.push_back(found == run_columns.end()
                          ? Value()
                          : run[static_cast<std::size_t>(found - run_columns.begin())]);
    }
    return row;
}

} // namespace

// The statements of one connection.
class ReportStore::Writer {
public:
    explicit Writer(soci::session& session)
        : find_unit_(session, "select unit_no from units where serial = :a", "t", "c"),
          find_run_(session, "select content_id from runs where run_id = :a", "t", "t"),
          to_(session), conflicts_(session, conflicts_table),
          refused_(session, quarantine_table, "file_id", "t") {}

    Added add(const Incoming& file) {
        now_ = std::time(nullptr);
        const auto* const report = std::get_if<Report>(&file);
        return report != nullptr ? add(*report) : refuse(std::get<RefusedFile>(file));
    }

private:
    struct Parts {
        std::vector<Row> causes;
        std::vector<Row> limits;
        std::vector<Row> notes;
        std::set<Row> macs;
    };

    Added add(const Report& report) {
        const std::int64_t unit = unit_of(report.serial);
        std::map<std::string, std::int64_t> fresh = add_runs(report, unit);
        Added added;
        Parts parts;
        std::vector<Row> conflicts;
        for (const RunRecord& run : report.runs) {
            const auto found = fresh.extract(run.text(run_place("run_id")));
            if (!found.empty()) {
                ++added.runs;
                gather(found.mapped(), unit, report, run, parts);
            } else if (is_known(run)) {
                ++added.known;
            } else {
                ++added.conflicts;
                conflicts.push_back(conflict_of(report, run));
            }
        }
        to_.causes.write(parts.causes);
        to_.limits.write(parts.limits);
        to_.notes.write(parts.notes);
        to_.macs.write({parts.macs.begin(), parts.macs.end()});
        conflicts_.write(conflicts);
        return added;
    }

    std::int64_t unit_of(const std::string& serial) {
        if (find_unit_.run({serial})) {
            return find_unit_.count(0);
        }
        std::int64_t unit = 0;
        to_.units.write({{serial}}, [&](const Statement& row) { unit = row.count(1); });
        if (unit != 0) {
            return unit;
        }
        // Another adder has made it in between.
        return find_unit_.run({serial}) ? find_unit_.count(0) : 0;
    }

    // The numbers of those runs that were not there.
    std::map<std::string, std::int64_t> add_runs(const Report& report, std::int64_t unit) {
        std::vector<Row> rows;
        rows.reserve(report.runs.size());
        for (const RunRecord& run : report.runs) {
            Row& row = rows.emplace_back(run.row);
            row[run_place("unit_no")] = unit;
            row[run_place("report_path")] = report.path;
            row[run_place("added_utc_s")] = now_;
        }
        std::map<std::string, std::int64_t> fresh;
        to_.runs.write(rows, [&](const Statement& row) { fresh[row.text(0)] = row.count(1); });
        return fresh;
    }

    bool is_known(const RunRecord& run) {
        return find_run_.run({run.text(run_place("run_id"))}) &&
               find_run_.text(0) == run.text(run_place("content_id"));
    }

    Row conflict_of(const Report& report, const RunRecord& run) const {
        Row row = same_columns(run.row, conflict_columns);
        row[place_of(conflict_columns, "serial")] = report.serial;
        row[place_of(conflict_columns, "report_path")] = report.path;
        row[place_of(conflict_columns, "seen_utc_s")] = now_;
        return row;
    }

    static void gather(std::int64_t run_no, std::int64_t unit, const Report& report,
                       const RunRecord& run, Parts& parts) {
        const auto add = [&](const std::vector<Row>& rows, std::vector<Row>& to) {
            for (const Row& row : rows) {
                to.emplace_back(row).front() = run_no;
            }
        };
        add(run.causes, parts.causes);
        add(run.limits, parts.limits);
        add(report.notes, parts.notes);
        for (const std::string& mac : run.macs) {
            parts.macs.insert({mac, unit});
        }
    }

    Added refuse(const RefusedFile& file) {
        Added added;
        refused_.write(
            {{file.id, file.path, file.reason, file.size, value_of(file.document), now_}},
            [&](const Statement&) { added.quarantined = true; });
        added.quarantined_before = !added.quarantined;
        return added;
    }

    std::int64_t now_ = 0;
    Statement find_unit_;
    Statement find_run_;
    RunWriters to_;
    TableWriter conflicts_;
    TableWriter refused_;
};

ReportStore::ReportStore(Database& database) : database_(database) {}

ReportStore::~ReportStore() = default;

void ReportStore::forget_connection() {
    writer_.reset();
}

StoreResult ReportStore::add(const Incoming& file, Added& added) {
    return database_.transact([&](soci::session& session) {
        if (!writer_) {
            writer_ = std::make_unique<Writer>(session);
        }
        added = writer_->add(file);
    });
}

} // namespace wivex::line

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

// The statements of one connection, and what one transaction gathers for them.
class ReportStore::Writer {
public:
    explicit Writer(soci::session& session)
        : find_unit_(session, "select unit_no from units where serial = :a", "t", "c"),
          find_run_(session, "select content_id from runs where run_id = :a", "t", "t"),
          to_(session), conflicts_(session, conflicts_table),
          refused_(session, quarantine_table, "file_id", "t") {}

    void add(std::span<const Incoming> files, std::vector<Added>& added) {
        now_ = std::time(nullptr);
        added.assign(files.size(), {});
        const std::map<std::string, std::int64_t> units = units_of(files);
        std::map<std::string, std::int64_t> fresh = add_runs(files, units);
        Parts parts;
        for (std::size_t i = 0; i < files.size(); ++i) {
            if (const auto* const report = std::get_if<Report>(&files[i])) {
                added[i] = sort(*report, units.at(report->serial), fresh, parts);
            } else {
                added[i] = refuse(std::get<RefusedFile>(files[i]));
            }
        }
        to_.causes.write(parts.causes);
        to_.limits.write(parts.limits);
        to_.notes.write(parts.notes);
        to_.macs.write({parts.macs.begin(), parts.macs.end()});
        conflicts_.write(parts.conflicts);
    }

private:
    struct Parts {
        std::vector<Row> causes;
        std::vector<Row> limits;
        std::vector<Row> notes;
        std::set<Row> macs;
        std::vector<Row> conflicts;
    };

    // Two adders that make the same units do it in the same order.
    std::map<std::string, std::int64_t> units_of(std::span<const Incoming> files) {
        std::map<std::string, std::int64_t> units;
        for (const Incoming& file : files) {
            if (const auto* const report = std::get_if<Report>(&file)) {
                units.try_emplace(report->serial, 0);
            }
        }
        std::vector<Row> rows;
        rows.reserve(units.size());
        for (const auto& [serial, unit] : units) {
            rows.push_back({serial});
        }
        to_.units.write(rows, [&](const Statement& row) { units[row.text(0)] = row.count(1); });
        for (auto& [serial, unit] : units) {
            // It was there before.
            if (unit == 0 && find_unit_.run({serial})) {
                unit = find_unit_.count(0);
            }
        }
        return units;
    }

    // The numbers of those runs that were not there.
    std::map<std::string, std::int64_t> add_runs(std::span<const Incoming> files,
                                                 const std::map<std::string, std::int64_t>& units) {
        std::vector<Row> rows;
        for (const Incoming& file : files) {
            const auto* const report = std::get_if<Report>(&file);
            for (std::size_t i = 0; report != nullptr && i < report->runs.size(); ++i) {
                Row& row = rows.emplace_back(report->runs[i].row);
                row[run_place("unit_no")] = units.at(report->serial);
                row[run_place("report_path")] = report->path;
                row[run_place("added_utc_s")] = now_;
            }
        }
        std::map<std::string, std::int64_t> fresh;
        to_.runs.write(rows, [&](const Statement& row) { fresh[row.text(0)] = row.count(1); });
        return fresh;
    }

    // Tells new runs from known ones and conflicts.
    Added sort(const Report& report, std::int64_t unit, std::map<std::string, std::int64_t>& fresh,
               Parts& parts) {
        Added added;
        for (const RunRecord& run : report.runs) {
            const auto found = fresh.extract(run.text(run_place("run_id")));
            if (!found.empty()) {
                ++added.runs;
                add_parts(found.mapped(), unit, report, run, parts);
            } else if (is_known(run)) {
                ++added.known;
            } else {
                ++added.conflicts;
                Row& row = parts.conflicts.emplace_back(same_columns(run.row, conflict_columns));
                row[place_of(conflict_columns, "serial")] = report.serial;
                row[place_of(conflict_columns, "report_path")] = report.path;
                row[place_of(conflict_columns, "seen_utc_s")] = now_;
            }
        }
        return added;
    }

    bool is_known(const RunRecord& run) {
        return find_run_.run({run.text(run_place("run_id"))}) &&
               find_run_.text(0) == run.text(run_place("content_id"));
    }

    static void add_parts(std::int64_t run_no, std::int64_t unit, const Report& report,
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

StoreResult ReportStore::add(std::span<const Incoming> files, std::vector<Added>& added) {
    return database_.transact([&](soci::session& session) {
        if (!writer_) {
            writer_ = std::make_unique<Writer>(session);
        }
        writer_->add(files, added);
    });
}

} // namespace wivex::line

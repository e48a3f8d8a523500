// SPDX-License-Identifier: Apache-2.0
#include "store/report_store.hpp"

#include "store/run_row.hpp"

#include <ctime>
#include <set>

namespace wivex::line {

// The statements of one connection.
class ReportStore::Writer {
public:
    explicit Writer(soci::session& session)
        : find_unit_(session, "select unit_no from units where serial = :a", "t", "c"),
          add_unit_(session,
                    "insert into units (serial) values (:a) on conflict (serial) do nothing "
                    "returning unit_no",
                    "t", "c"),
          add_mac_(session,
                   "insert into unit_macs (mac, unit_no) values (:a, :b) on conflict do nothing",
                   "tc"),
          add_run_(session, run_insert(), run_kinds(), "c"),
          find_run_(session, "select content_id from runs where run_id = :a", "t", "t"),
          add_cause_(session,
                     "insert into run_causes (run_no, cause, failures, warnings, first_iteration) "
                     "values (:a, :b, :c, :d, :e)",
                     "ctccc"),
          add_limit_(session,
                     "insert into run_limits (run_no, name, comparison, limit_value, unit, value, "
                     "verdict) values (:a, :b, :c, :d, :e, :f, :g)",
                     "cttftft"),
          add_note_(session,
                    "insert into run_notes (run_no, kind, name, words) values (:a, :b, :c, :d)",
                    "cttt"),
          add_conflict_(session,
                        "insert into conflicts (run_id, content_id, serial, attempt, station, "
                        "mode, verdict, cause, iterations, report_path, began_at, seen_utc_s) "
                        "values (:a, :b, :c, :d, :e, :f, :g, :h, :i, :j, :k, :l) "
                        "on conflict (run_id, content_id) do nothing",
                        "tttcttttcttc"),
          refuse_(session,
                  "insert into quarantine (file_id, path, reason, size_bytes, document, "
                  "seen_utc_s) values (:a, :b, :c, :d, :e, :f) on conflict (file_id) do nothing "
                  "returning quarantine_no",
                  "tttctc", "c") {}

    Added add(const Incoming& file) {
        const auto* const report = std::get_if<Report>(&file);
        return report != nullptr ? add(*report) : refuse(std::get<RefusedFile>(file));
    }

private:
    static std::int64_t now() {
        return std::time(nullptr);
    }

    std::int64_t unit_of(const std::string& serial) {
        if (find_unit_.run({serial})) {
            return find_unit_.count(0);
        }
        if (add_unit_.run({serial})) {
            return add_unit_.count(0);
        }
        // Another station made it between the two.
        find_unit_.run({serial});
        return find_unit_.count(0);
    }

    Added add(const Report& report) {
        const std::int64_t unit = unit_of(report.identity.serial);
        Added added;
        for (const RunRecord& run : report.runs) {
            if (add_run_.run(run_values(report, run, unit, now()))) {
                add_parts(add_run_.count(0), report, run);
                add_macs(unit, report, run);
                ++added.runs;
            } else if (find_run_.run({run.id}) && find_run_.text(0) == run.content) {
                ++added.known;
            } else {
                add_conflict(report, run);
                ++added.conflicts;
            }
        }
        return added;
    }

    void add_parts(std::int64_t run_no, const Report& report, const RunRecord& run) {
        for (const CauseCount& cause : run.causes) {
            add_cause_.run({run_no, cause.cause, cause.failures, cause.warnings,
                            value_of(cause.first_iteration)});
        }
        for (const LimitResult& limit : run.limits) {
            add_limit_.run({run_no, limit.name, limit.comparison, limit.limit, value_of(limit.unit),
                            value_of(limit.value), limit.verdict});
        }
        for (const Note& note : report.notes) {
            add_note_.run({run_no, note.kind, note.name, note.text});
        }
    }

    void add_macs(std::int64_t unit, const Report& report, const RunRecord& run) {
        std::set<std::string> macs(run.macs.begin(), run.macs.end());
        if (report.identity.mac) {
            macs.insert(*report.identity.mac);
        }
        for (const std::string& mac : macs) {
            add_mac_.run({mac, unit});
        }
    }

    void add_conflict(const Report& report, const RunRecord& run) {
        add_conflict_.run({run.id, run.content, report.identity.serial,
                           value_of(report.identity.attempt), value_of(report.identity.station),
                           run.mode, run.verdict, value_of(run.cause), run.iterations, report.path,
                           value_of(run.began_at), now()});
    }

    Added refuse(const RefusedFile& file) {
        Added added;
        added.quarantined = refuse_.run(
            {file.id, file.path, file.reason, file.size, value_of(file.document), now()});
        added.quarantined_before = !added.quarantined;
        return added;
    }

    Statement find_unit_;
    Statement add_unit_;
    Statement add_mac_;
    Statement add_run_;
    Statement find_run_;
    Statement add_cause_;
    Statement add_limit_;
    Statement add_note_;
    Statement add_conflict_;
    Statement refuse_;
};

ReportStore::ReportStore(Database& database) : database_(database) {}

ReportStore::~ReportStore() = default;

void ReportStore::forget_connection() {
    writer_.reset();
}

StoreResult ReportStore::add(std::span<const Incoming> files, std::vector<Added>& added) {
    return database_.transact([&](soci::session& session) {
        added.clear();
        if (!writer_) {
            writer_ = std::make_unique<Writer>(session);
        }
        for (const Incoming& file : files) {
            added.push_back(writer_->add(file));
        }
    });
}

} // namespace wivex::line

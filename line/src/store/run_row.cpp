// SPDX-License-Identifier: Apache-2.0
#include "store/run_row.hpp"

#include "model/phases.hpp"

namespace wivex::line {

namespace {

struct Column {
    std::string name;
    char kind;
};

std::vector<Column> columns() {
    std::vector<Column> list{{"unit_no", 'c'},
                             {"run_id", 't'},
                             {"attempt", 'c'},
                             {"report_id", 't'},
                             {"report_path", 't'},
                             {"part", 't'},
                             {"station", 't'},
                             {"operator", 't'},
                             {"mac", 't'},
                             {"kernel", 't'},
                             {"driver", 't'},
                             {"driver_version", 't'},
                             {"firmware", 't'},
                             {"regulatory_domain", 't'},
                             {"mode", 't'},
                             {"run_end", 't'},
                             {"verdict", 't'},
                             {"limits_verdict", 't'},
                             {"passed", 'c'},
                             {"cause", 't'},
                             {"began_at", 't'},
                             {"ended_at", 't'},
                             {"began_utc_s", 'c'},
                             {"duration_s", 'f'},
                             {"iterations", 'c'},
                             {"iterations_passed", 'c'},
                             {"iterations_failed", 'c'},
                             {"iterations_failed_uncounted", 'c'},
                             {"iterations_unfinished", 'c'},
                             {"iterations_warned", 'c'},
                             {"throughput_least_mbit_s", 'f'}};
    for (const Measure& measure : measures()) {
        list.push_back({measure.column, 'f'});
    }
    list.push_back({"content_id", 't'});
    list.push_back({"added_utc_s", 'c'});
    return list;
}

std::string made_insert() {
    constexpr std::string_view names = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";
    std::string list;
    std::string values;
    std::size_t index = 0;
    for (const Column& column : columns()) {
        list += (index == 0 ? "" : ", ") + column.name;
        values += (index == 0 ? ":" : ", :") + std::string(1, names.at(index));
        ++index;
    }
    return "insert into runs (" + list + ") values (" + values +
           ") on conflict (run_id) do nothing returning run_no";
}

std::string made_kinds() {
    std::string kinds;
    for (const Column& column : columns()) {
        kinds += column.kind;
    }
    return kinds;
}

} // namespace

const std::string& run_insert() {
    static const std::string sql = made_insert();
    return sql;
}

const std::string& run_kinds() {
    static const std::string kinds = made_kinds();
    return kinds;
}

std::vector<Value> run_values(const Report& report, const RunRecord& run, std::int64_t unit_no,
                              std::int64_t added) {
    const Identity& who = report.identity;
    std::vector<Value> values{unit_no,
                              run.id,
                              value_of(who.attempt),
                              report.id,
                              report.path,
                              value_of(who.part),
                              value_of(who.station),
                              value_of(who.worker),
                              value_of(who.mac),
                              value_of(who.kernel),
                              value_of(who.driver),
                              value_of(who.driver_version),
                              value_of(who.firmware),
                              value_of(who.regulatory_domain),
                              run.mode,
                              run.end,
                              run.verdict,
                              value_of(run.limits_verdict),
                              std::int64_t{run.passed ? 1 : 0},
                              value_of(run.cause),
                              value_of(run.began_at),
                              value_of(run.ended_at),
                              value_of(run.began),
                              value_of(run.duration),
                              run.iterations};
    for (const std::int64_t count : run.outcomes) {
        values.emplace_back(count);
    }
    values.emplace_back(run.warned);
    values.push_back(value_of(run.throughput_least));
    values.push_back(value_of(run.throughput_mean));
    values.push_back(value_of(run.signal_mean));
    for (const Figure& mean : run.phase_means) {
        values.push_back(value_of(mean));
    }
    values.emplace_back(run.content);
    values.emplace_back(added);
    return values;
}

const std::vector<Measure>& measures() {
    static const std::vector<Measure> list = [] {
        std::vector<Measure> made{{"throughput_mean_mbit_s", "throughput", "Mbit/s", true},
                                  {"signal_mean_dbm", "signal", "dBm", true}};
        for (const report::Phase phase : report::all_phases()) {
            const std::string name(report::name_of(phase));
            made.push_back({name + "_mean_s", name, "s", false});
        }
        return made;
    }();
    return list;
}

} // namespace wivex::line

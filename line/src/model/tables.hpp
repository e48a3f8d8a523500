// SPDX-License-Identifier: Apache-2.0
// The tables that reports fill, a row a column: its name (with its unit), its kind, and where a
// run.json tells it. Reading, checking, writing, pages and exports follow these rows.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace wivex::line {

enum class Kind : std::uint8_t { text, count, figure, flag };

struct Column {
    std::string_view name;
    Kind kind = Kind::text;
    /// Where a run.json tells it; empty: the program makes it.
    std::string_view path{};
    bool required = false; ///< a report without it is none
    std::size_t longest = 256;
};

struct Table {
    std::string_view name;
    /// Where a run.json has the objects that become its rows.
    std::string_view path;
    std::span<const Column> columns;
    /// What tells two rows apart: a row that is there already stays.
    std::string_view key;
};

inline constexpr auto run_columns = std::to_array<Column>({
    {"unit_no", Kind::count},
    {"run_id", Kind::text, "/runs/*/id", false, 32},
    {"attempt", Kind::count, "/identity/attempt"},
    {"report_id", Kind::text},
    {"report_path", Kind::text},
    {"part", Kind::text, "/identity/part"},
    {"station", Kind::text, "/identity/station"},
    {"operator", Kind::text, "/identity/operator"},
    {"mac", Kind::text, "/identity/mac"},
    {"kernel", Kind::text, "/identity/kernel"},
    {"driver", Kind::text, "/identity/driver"},
    {"driver_version", Kind::text, "/identity/driver_version"},
    {"firmware", Kind::text, "/identity/firmware"},
    {"regulatory_domain", Kind::text, "/identity/regulatory_domain"},
    {"mode", Kind::text, "/runs/*/mode", true, 48},
    {"run_end", Kind::text, "/runs/*/end", true, 48},
    {"verdict", Kind::text, "/runs/*/verdict", true},
    {"limits_verdict", Kind::text, "/runs/*/limits_verdict"},
    {"passed", Kind::count},
    {"cause", Kind::text},
    {"began_at", Kind::text, "/runs/*/began_at", false, 40},
    {"ended_at", Kind::text, "/runs/*/ended_at", false, 40},
    {"began_utc_s", Kind::count},
    {"duration_s", Kind::figure, "/runs/*/seconds"},
    {"iterations", Kind::count, "/runs/*/iterations_started", true},
    {"iterations_passed", Kind::count, "/runs/*/outcomes/passed", true},
    {"iterations_failed", Kind::count, "/runs/*/outcomes/failed", true},
    {"iterations_failed_uncounted", Kind::count, "/runs/*/outcomes/failed-uncounted", true},
    {"iterations_unfinished", Kind::count, "/runs/*/outcomes/unfinished", true},
    {"iterations_warned", Kind::count, "/runs/*/warned"},
    {"throughput_least_mbit_s", Kind::figure, "/runs/*/throughput/least"},
    {"throughput_mean_mbit_s", Kind::figure, "/runs/*/throughput/mean"},
    {"signal_mean_dbm", Kind::figure, "/runs/*/signal/mean"},
    {"module_mean_s", Kind::figure, "/runs/*/phases/module"},
    {"driver_mean_s", Kind::figure, "/runs/*/phases/driver"},
    {"mac_mean_s", Kind::figure, "/runs/*/phases/mac"},
    {"loopback_mean_s", Kind::figure, "/runs/*/phases/loopback"},
    {"session_mean_s", Kind::figure, "/runs/*/phases/session"},
    {"scan_mean_s", Kind::figure, "/runs/*/phases/scan"},
    {"associate_mean_s", Kind::figure, "/runs/*/phases/associate"},
    {"find_mean_s", Kind::figure, "/runs/*/phases/find"},
    {"negotiate_mean_s", Kind::figure, "/runs/*/phases/negotiate"},
    {"group_mean_s", Kind::figure, "/runs/*/phases/group"},
    {"dhcp_mean_s", Kind::figure, "/runs/*/phases/dhcp"},
    {"traffic_mean_s", Kind::figure, "/runs/*/phases/traffic"},
    {"serve_mean_s", Kind::figure, "/runs/*/phases/serve"},
    {"disconnect_mean_s", Kind::figure, "/runs/*/phases/disconnect"},
    {"removal_mean_s", Kind::figure, "/runs/*/phases/removal"},
    {"content_id", Kind::text},
    {"added_utc_s", Kind::count},
});

inline constexpr auto cause_columns = std::to_array<Column>({
    {"run_no", Kind::count},
    {"cause", Kind::text, "/runs/*/causes/*/cause", true, 48},
    {"failures", Kind::count, "/runs/*/causes/*/failures", true},
    {"warnings", Kind::count, "/runs/*/causes/*/warnings"},
    {"first_iteration", Kind::count, "/runs/*/causes/*/first_iteration"},
});

inline constexpr auto limit_columns = std::to_array<Column>({
    {"run_no", Kind::count},
    {"name", Kind::text, "/runs/*/limits/*/name", true},
    {"comparison", Kind::text, "/runs/*/limits/*/operator", true},
    {"limit_value", Kind::figure, "/runs/*/limits/*/limit", true},
    {"unit", Kind::text, "/runs/*/limits/*/unit", false, 32},
    {"value", Kind::figure, "/runs/*/limits/*/value"},
    {"verdict", Kind::text, "/runs/*/limits/*/verdict", true},
});

inline constexpr auto note_columns = std::to_array<Column>({
    {"run_no", Kind::count},
    {"kind", Kind::text},
    {"name", Kind::text},
    {"words", Kind::text},
});

inline constexpr auto mac_columns = std::to_array<Column>({
    {"mac", Kind::text},
    {"unit_no", Kind::count},
});

inline constexpr auto unit_columns = std::to_array<Column>({{"serial", Kind::text}});

inline constexpr auto conflict_columns = std::to_array<Column>({
    {"run_id", Kind::text},
    {"content_id", Kind::text},
    {"serial", Kind::text},
    {"attempt", Kind::count},
    {"station", Kind::text},
    {"mode", Kind::text},
    {"verdict", Kind::text},
    {"cause", Kind::text},
    {"iterations", Kind::count},
    {"report_path", Kind::text},
    {"began_at", Kind::text},
    {"seen_utc_s", Kind::count},
});

inline constexpr auto refused_columns = std::to_array<Column>({
    {"file_id", Kind::text},
    {"path", Kind::text},
    {"reason", Kind::text},
    {"size_bytes", Kind::count},
    {"document", Kind::text},
    {"seen_utc_s", Kind::count},
});

inline constexpr Table runs_table{"runs", "/runs/*", run_columns, "run_id"};
inline constexpr Table causes_table{"run_causes", "/runs/*/causes/*", cause_columns,
                                    "run_no, cause"};
inline constexpr Table limits_table{"run_limits", "/runs/*/limits/*", limit_columns,
                                    "run_no, name, comparison"};
inline constexpr Table notes_table{"run_notes", "", note_columns, "run_no, kind, name"};
inline constexpr Table macs_table{"unit_macs", "", mac_columns, "mac, unit_no"};
inline constexpr Table units_table{"units", "", unit_columns, "serial"};
inline constexpr Table conflicts_table{"conflicts", "", conflict_columns, "run_id, content_id"};
inline constexpr Table quarantine_table{"quarantine", "", refused_columns, "file_id"};

/// The place of a column among `columns`; a name that is none does not compile.
consteval std::size_t place_of(std::span<const Column> columns, std::string_view name) {
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (columns[i].name == name) {
            return i;
        }
    }
    throw "no such column";
}

consteval std::size_t run_place(std::string_view name) {
    return place_of(run_columns, name);
}

/// The figures of a run that pages compare: throughput, signal and the times of phases.
struct Measure {
    std::string_view column;
    std::string_view words; ///< "throughput"
    std::string_view unit;
    bool more_is_better = false;
};

inline constexpr std::size_t first_measure = run_place("throughput_mean_mbit_s");
inline constexpr std::size_t measure_count = run_place("content_id") - first_measure;

/// The measure of a column "NAME_mean_UNIT".
constexpr Measure measure_of(std::string_view column) {
    constexpr std::string_view middle = "_mean_";
    const std::size_t end = column.find(middle);
    const std::string_view unit = column.substr(end + middle.size());
    return {column, column.substr(0, end),
            unit == "mbit_s" ? "Mbit/s"
            : unit == "dbm"  ? "dBm"
                             : unit,
            unit != "s"};
}

inline constexpr auto measures = [] {
    std::array<Measure, measure_count> list{};
    for (std::size_t i = 0; i < measure_count; ++i) {
        list.at(i) = measure_of(run_columns.at(first_measure + i).name);
    }
    return list;
}();

} // namespace wivex::line

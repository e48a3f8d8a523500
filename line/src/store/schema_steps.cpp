// SPDX-License-Identifier: Apache-2.0
#include "store/schema_steps.hpp"

#include <array>

namespace wivex::line {

namespace {

constexpr auto tables = std::to_array<std::string_view>({
    R"(create table units (
        unit_no @number,
        serial text not null unique))",
    R"(create table unit_macs (
        mac text not null,
        unit_no bigint not null references units,
        primary key (mac, unit_no)))",
    R"(create index macs_of_unit on unit_macs (unit_no))",
    R"(create table runs (
        run_no @number,
        run_id text not null unique,
        unit_no bigint not null references units,
        attempt bigint,
        report_id text not null,
        report_path text,
        part text,
        station text,
        operator text,
        mac text,
        kernel text,
        driver text,
        driver_version text,
        firmware text,
        regulatory_domain text,
        mode text not null,
        run_end text not null,
        verdict text not null,
        limits_verdict text,
        passed smallint not null,
        cause text,
        began_at text,
        ended_at text,
        began_utc_s bigint,
        duration_s double precision,
        iterations bigint not null,
        iterations_passed bigint not null,
        iterations_failed bigint not null,
        iterations_failed_uncounted bigint not null,
        iterations_unfinished bigint not null,
        iterations_warned bigint not null,
        throughput_mean_mbit_s double precision,
        throughput_least_mbit_s double precision,
        signal_mean_dbm double precision,
        module_mean_s double precision,
        driver_mean_s double precision,
        mac_mean_s double precision,
        loopback_mean_s double precision,
        session_mean_s double precision,
        scan_mean_s double precision,
        associate_mean_s double precision,
        find_mean_s double precision,
        negotiate_mean_s double precision,
        group_mean_s double precision,
        dhcp_mean_s double precision,
        traffic_mean_s double precision,
        serve_mean_s double precision,
        disconnect_mean_s double precision,
        removal_mean_s double precision,
        content_id text not null,
        added_utc_s bigint not null))",
    R"(create index runs_of_unit on runs (unit_no, run_no))",
    R"(create index runs_by_time on runs (began_utc_s))",
    R"(create table run_causes (
        run_no bigint not null references runs,
        cause text not null,
        failures bigint not null,
        warnings bigint not null,
        first_iteration bigint,
        primary key (run_no, cause)))",
    R"(create table run_limits (
        run_no bigint not null references runs,
        name text not null,
        comparison text not null,
        limit_value double precision not null,
        unit text,
        value double precision,
        verdict text not null,
        primary key (run_no, name, comparison)))",
    R"(create table run_notes (
        run_no bigint not null references runs,
        kind text not null,
        name text not null,
        words text not null,
        primary key (run_no, kind, name)))",
    R"(create table conflicts (
        conflict_no @number,
        run_id text not null,
        content_id text not null,
        serial text not null,
        attempt bigint,
        station text,
        mode text not null,
        verdict text not null,
        cause text,
        iterations bigint not null,
        report_path text not null,
        began_at text,
        seen_utc_s bigint not null,
        unique (run_id, content_id)))",
    R"(create table quarantine (
        quarantine_no @number,
        file_id text not null unique,
        path text not null,
        reason text not null,
        size_bytes bigint not null,
        document text,
        seen_utc_s bigint not null,
        named_serial text,
        named_utc_s bigint))",
});

// "day_utc" counts days since 1970 in UTC. An attempt is what a station calls one, or one report. A
// unit whose lowest number is not 1 has a first attempt that nobody has seen: no pass.
constexpr auto views = std::to_array<std::string_view>({
    R"(create view attempts as
        select unit_no, coalesce('#' || attempt, report_id) as attempt_key, min(attempt) as attempt,
            count(*) as runs, min(passed) as passed, min(began_utc_s) as began_utc_s,
            min(began_utc_s) / 86400 as day_utc, min(station) as station,
            min(run_no) as first_run_no
        from runs group by unit_no, coalesce('#' || attempt, report_id))",
    R"(create view first_attempts as
        select unit_no, attempt_key, attempt, runs,
            case when coalesce(attempt, 1) = 1 then passed else 0 end as passed,
            began_utc_s, day_utc, station, first_run_no
        from (select attempts.*, row_number() over (partition by unit_no
                order by case when attempt is null then 1 else 0 end, attempt,
                    case when began_utc_s is null then 1 else 0 end, began_utc_s,
                    first_run_no) as place
            from attempts) as placed
        where place = 1)",
    R"(create view unit_list as
        select units.unit_no, units.serial, min(runs.passed) as all_runs_passed,
            count(*) as runs, min(began_utc_s) as first_began_utc_s,
            max(began_utc_s) as last_began_utc_s
        from units join runs on runs.unit_no = units.unit_no group by units.unit_no, units.serial)",
    R"(create view run_list as
        select units.serial, runs.run_no, run_id, attempt, part, station, operator, runs.mac, firmware,
            driver, driver_version, kernel, mode, run_end, verdict, limits_verdict, passed, cause,
            began_at, began_utc_s, began_utc_s / 86400 as day_utc, duration_s, iterations,
            throughput_mean_mbit_s, throughput_least_mbit_s, signal_mean_dbm, report_path
        from runs join units on units.unit_no = runs.unit_no)",
    R"(create view phase_times as
        select run_no, 'module' as phase, module_mean_s as mean_s from runs where module_mean_s is not null
        union all select run_no, 'driver', driver_mean_s from runs where driver_mean_s is not null
        union all select run_no, 'mac', mac_mean_s from runs where mac_mean_s is not null
        union all select run_no, 'loopback', loopback_mean_s from runs where loopback_mean_s is not null
        union all select run_no, 'session', session_mean_s from runs where session_mean_s is not null
        union all select run_no, 'scan', scan_mean_s from runs where scan_mean_s is not null
        union all select run_no, 'associate', associate_mean_s from runs where associate_mean_s is not null
        union all select run_no, 'find', find_mean_s from runs where find_mean_s is not null
        union all select run_no, 'negotiate', negotiate_mean_s from runs where negotiate_mean_s is not null
        union all select run_no, 'group', group_mean_s from runs where group_mean_s is not null
        union all select run_no, 'dhcp', dhcp_mean_s from runs where dhcp_mean_s is not null
        union all select run_no, 'traffic', traffic_mean_s from runs where traffic_mean_s is not null
        union all select run_no, 'serve', serve_mean_s from runs where serve_mean_s is not null
        union all select run_no, 'disconnect', disconnect_mean_s from runs where disconnect_mean_s is not null
        union all select run_no, 'removal', removal_mean_s from runs where removal_mean_s is not null)",
});

} // namespace

std::span<const std::string_view> tables_step() {
    return tables;
}

std::span<const std::string_view> views_step() {
    return views;
}

} // namespace wivex::line

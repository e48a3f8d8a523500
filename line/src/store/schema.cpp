// SPDX-License-Identifier: Apache-2.0
#include "store/schema.hpp"

#include "store/schema_steps.hpp"
#include "store/statement.hpp"

#include <array>
#include <ctime>

namespace wivex::line {

namespace {

using Step = std::span<const std::string_view> (*)();

// The step at index N leads from version N to N + 1.
constexpr auto steps = std::to_array<Step>({tables_step, views_step});

std::string for_dialect(std::string_view sql, bool postgresql) {
    constexpr std::string_view mark = "@number";
    std::string text(sql);
    const std::size_t place = text.find(mark);
    if (place != std::string::npos) {
        text.replace(place, mark.size(),
                     postgresql ? "bigint generated always as identity primary key"
                                : "integer primary key autoincrement");
    }
    return text;
}

int present_version(soci::session& session) {
    session << "create table if not exists schema_steps ("
               "version integer not null primary key, done_utc_s bigint not null)";
    int version = 0;
    session << "select coalesce(max(version), 0) from schema_steps", soci::into(version);
    return version;
}

} // namespace

int newest_schema() {
    return static_cast<int>(steps.size());
}

bool is_up_to_date(soci::session& session) {
    int version = 0;
    session << "select coalesce(max(version), 0) from schema_steps", soci::into(version);
    return version == newest_schema();
}

void bring_up_to_date(soci::session& session, bool postgresql, int version) {
    if (postgresql) {
        // Two stations that start at once do not both make the tables.
        session << "select pg_advisory_xact_lock(7249310)";
    }
    const int present = present_version(session);
    if (present > newest_schema()) {
        throw soci::soci_error("the database has version " + std::to_string(present) +
                               " of the tables; this wivex-line knows up to " +
                               std::to_string(newest_schema()));
    }
    for (int step = present; step < version; ++step) {
        for (const std::string_view sql : steps.at(static_cast<std::size_t>(step))()) {
            session << for_dialect(sql, postgresql);
        }
        Statement(session, "insert into schema_steps (version, done_utc_s) values (:a, :b)", "cc")
            .run({std::int64_t{step + 1}, static_cast<std::int64_t>(std::time(nullptr))});
    }
}

const std::set<std::string>& exported_views() {
    static const std::set<std::string> views{"attempts", "first_attempts", "phase_times",
                                             "run_list", "unit_list"};
    return views;
}

const std::vector<std::string>& exported_tables() {
    static const std::vector<std::string> tables{
        "attempts",     "conflicts",  "first_attempts", "phase_times", "quarantine",
        "run_causes",   "run_limits", "run_list",       "run_notes",   "runs",
        "schema_steps", "unit_list",  "unit_macs",      "units"};
    return tables;
}

} // namespace wivex::line

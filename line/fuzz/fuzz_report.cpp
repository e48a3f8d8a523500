// SPDX-License-Identifier: Apache-2.0
// Any bytes as a run.json. What is taken has to be within its bounds, to go into the database and
// to come out of it as it was, to be known when it comes again, and to make pages that are
// well-formed. What is refused says why in one line.

#include "checks.hpp"
#include "common/content_id.hpp"
#include "common/printable.hpp"
#include "reader/report_reader.hpp"
#include "store/factory_walk.hpp"
#include "store/report_store.hpp"
#include "store/schema.hpp"
#include "store/table_dump.hpp"
#include "store/unit_history.hpp"
#include "writers/line_page.hpp"
#include "writers/table_text.hpp"
#include "writers/unit_page.hpp"
#include "writers/unit_text.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <numeric>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace wivex::line;
using report_fuzz::check_well_formed;
using report_fuzz::require;
using wivex::report::is_printable;

constexpr Moment now = 1'795'600'000;

void check_run(const RunRecord& run) {
    require(is_content_id(run.text(run_place("run_id"))));
    require(is_content_id(run.text(run_place("content_id"))));
    require(run.passed() == is_null(run.row[run_place("cause")]));
    const std::int64_t iterations = run.count(run_place("iterations"));
    require(!run.passed() || (run.text(run_place("verdict")) == "passed" && iterations > 0));
    const auto outcomes = std::span(run.row).subspan(run_place("iterations_passed"), 4);
    const auto add = [](std::int64_t sum, const Value& count) { return sum + count_in(count); };
    require(std::accumulate(outcomes.begin(), outcomes.end(), std::int64_t{0}, add) <= iterations);
    for (const Value& value : run.row) {
        const auto* const figure = std::get_if<double>(&value);
        require(figure == nullptr || std::fabs(*figure) <= 1e9);
    }
}

void check_report(const Report& report) {
    require(!report.serial.empty() && report.serial.size() <= 256);
    require(is_printable(report.serial));
    require(!report.runs.empty());
    std::ranges::for_each(report.runs, check_run);
}

// One database in memory for all inputs; it is emptied after each.
Database& database() {
    static const std::unique_ptr<Database> made = [] {
        std::unique_ptr<Database> opened;
        require(Database::open(":memory:", true, opened).good());
        return opened;
    }();
    return *made;
}

void empty_database() {
    const StoreResult result = database().transact([](soci::session& session) {
        for (const char* const table : {"run_causes", "run_limits", "run_notes", "unit_macs",
                                        "conflicts", "quarantine", "runs", "units"}) {
            session << "delete from " + std::string(table);
        }
    });
    require(result.good());
}

void check_added(const Report& report) {
    static ReportStore store(database());
    Added added;
    require(store.add(report, added).good());
    require(added.runs == report.runs.size());
    require(store.add(report, added).good());
    require(added.known == report.runs.size());
}

// Each column that the report fills comes out as it went in.
void check_rows(const Report& report) {
    std::vector<std::string> names;
    std::size_t run = 0;
    const auto each = [&](const std::vector<Value>& values) {
        const Row& row = report.runs.at(run++).row;
        for (std::size_t i = 0; i < run_columns.size(); ++i) {
            const auto found = std::ranges::find(names, run_columns.at(i).name);
            require(found != names.end());
            require(is_null(row.at(i)) ||
                    values.at(static_cast<std::size_t>(found - names.begin())) == row.at(i));
        }
        return true;
    };
    const auto head = [&](const std::vector<std::string>& columns) { names = columns; };
    require(dump_table(database(), "runs", head, each).good());
    require(run == report.runs.size());
}

void check_unit(soci::session& session, const Report& report) {
    UnitReader reader(session);
    const std::vector<std::int64_t> found = reader.find(report.serial);
    UnitHistory unit;
    require(found.size() == 1 && reader.read(found.front(), unit));
    require(unit.serial == report.serial && unit.conflicts.empty());
    require(unit.runs.size() == report.runs.size());
    const std::vector<Attempt> attempts = unit.attempts();
    const bool all_passed = std::ranges::all_of(report.runs, &RunRecord::passed);
    require(attempts.size() == 1 && attempts.front().passed == all_passed);
    require(!unit_text(unit).empty());
    check_well_formed(unit_page(unit, [](const UnitRun& run) { return run.report_path; }));
}

void check_line(soci::session& session, const Report& report) {
    Factory factory(now, 10);
    walk_units(session, factory);
    require(factory.units() == 1);
    require(factory.runs() == static_cast<std::int64_t>(report.runs.size()));
    const Moment since = factory.periods().back().begin;
    const auto measures = measure_groups(session, since);
    const auto limits = limit_groups(session, since);
    check_well_formed(line_page({factory, measures, limits, doubts(session)}));
}

void check_export() {
    for (const std::string& table : exported_tables()) {
        std::vector<std::string> names;
        const auto each = [&](const std::vector<Value>& values) {
            require(csv_line(values).ends_with("\n"));
            require(nlohmann::json::accept(json_object(names, values)));
            return true;
        };
        const auto head = [&](const std::vector<std::string>& columns) { names = columns; };
        require(dump_table(database(), table, head, each).good());
    }
}

void check_stored(const Report& report) {
    check_added(report);
    const StoreResult result = database().read([&](soci::session& session) {
        check_unit(session, report);
        check_line(session, report);
    });
    require(result.good());
    check_rows(report);
    check_export();
    empty_database();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    Report report;
    std::string reason;
    ReadResult result = read_report(text, "", report, reason);
    require((result == ReadResult::good) == reason.empty());
    require(reason.size() < 1000 && reason.find('\n') == std::string::npos);
    if (result == ReadResult::nameless) {
        report = {};
        result = read_report(text, "4711", report, reason);
        require(result == ReadResult::good && report.serial == "4711");
    }
    if (result == ReadResult::good) {
        report.path = "/reports/1/run.json";
        check_report(report);
        check_stored(report);
    }
    return 0;
}

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t most);

// Half of the mutations put another value into one place of the document, and leave it a document.
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t most, unsigned int seed) {
    using Json = nlohmann::json;
    std::minstd_rand random(seed);
    const Json document = Json::parse(data, data + size, nullptr, false);
    if (document.is_discarded() || !document.is_structured() || random() % 2 == 0) {
        return LLVMFuzzerMutate(data, size, most);
    }
    const Json flat = document.flatten();
    auto place = flat.cbegin();
    std::advance(place, static_cast<std::ptrdiff_t>(random() % flat.size()));
    auto other = flat.cbegin();
    std::advance(other, static_cast<std::ptrdiff_t>(random() % flat.size()));
    const std::vector<Json> values{*other,    nullptr,   true,      false,         0,
                                   1,         3,         -1,        1e300,         1e9,
                                   "",        "a\u0001", "<&",      "passed",      "failed",
                                   "unknown", "within",  "outside", Json::array(), 0.5};
    Json changed = document;
    changed.at(Json::json_pointer(place.key())) = values[random() % values.size()];
    const std::string text = changed.dump(-1, ' ', false, Json::error_handler_t::replace);
    if (text.size() > most) {
        return LLVMFuzzerMutate(data, size, most);
    }
    std::ranges::copy(text, data);
    return text.size();
}

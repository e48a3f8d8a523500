// SPDX-License-Identifier: Apache-2.0
// wivex-line-perf DATABASE RUNS: how fast runs are added beside a bare loop of inserts, how long a
// page and a unit take afterwards, and how much memory it all needs. Prints figures and ratios.

#include "common/content_id.hpp"
#include "made_factory.hpp"
#include "program/adding.hpp"
#include "program/site.hpp"
#include "reader/report_reader.hpp"
#include "store/run_row.hpp"
#include "store/unit_history.hpp"

#include <sys/resource.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

namespace wivex::line {

namespace {

using Clock = std::chrono::steady_clock;

double seconds_since(Clock::time_point begin) {
    return std::chrono::duration<double>(Clock::now() - begin).count();
}

long peak_megabytes() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss / 1024;
}

FactoryPlan plan_of(long runs) {
    FactoryPlan plan{.seed = 5, .defects = true};
    plan.units_a_day = static_cast<int>(runs / plan.days);
    return plan;
}

// The texts are made outside of the time that counts.
double add_all(Database& database, long runs, std::int64_t& added) {
    Adding adding(database, 0, [](const Incoming&, const Added&) {});
    double spent = 0;
    double reading = 0;
    make_factory(plan_of(runs), [&](const WrittenReport& written, Moment) {
        const std::string text = written.text();
        const Clock::time_point begin = Clock::now();
        Report report;
        report.path = "/reports/" + written.serial + "/run.json";
        std::string reason;
        const ReadResult result = read_report(text, "", report, reason);
        reading += seconds_since(begin);
        if (result == ReadResult::good) {
            adding.take(report);
        }
        spent += seconds_since(begin);
    });
    const Clock::time_point begin = Clock::now();
    adding.finish();
    added = static_cast<std::int64_t>(adding.totals().runs);
    const double all = spent + seconds_since(begin);
    std::printf("reading      %.0f %% of the time\n", 100 * reading / all);
    return all;
}

// What the library costs at the least: one insert of the same values a run, as many in one commit.
double bare_loop(Database& database, long runs) {
    std::string reason;
    Report report;
    read_report(WrittenReport().text(), "", report, reason);
    std::vector<Value> values = run_values(report, report.runs.front(), 1, 0);
    long done = 0;
    const Clock::time_point begin = Clock::now();
    while (done < runs) {
        database.transact([&](soci::session& session) {
            static std::unique_ptr<Statement> insert;
            if (!insert) {
                insert = std::make_unique<Statement>(session, run_insert(), run_kinds(), "c");
            }
            for (int i = 0; i < 100 && done < runs; ++i, ++done) {
                values.at(1) = content_id(std::to_string(done));
                values.at(0) = std::int64_t{1 + done % 1000};
                insert->run(values);
            }
        });
    }
    return seconds_since(begin);
}

double unit_seconds(Database& database) {
    const Clock::time_point begin = Clock::now();
    UnitHistory unit;
    database.read([&](soci::session& session) {
        UnitReader reader(session);
        for (const std::int64_t unit_no : reader.find("100077")) {
            reader.read(unit_no, unit);
        }
    });
    return unit.runs.empty() ? -1 : seconds_since(begin);
}

std::unique_ptr<Database> opened(const std::string& place) {
    std::unique_ptr<Database> database;
    const StoreResult result = Database::open(place, true, database);
    if (!result.good()) {
        std::fprintf(stderr, "%s\n", result.words.c_str());
        std::exit(1);
    }
    return database;
}

int start(const std::string& place, long runs, const std::string& bare_place) {
    const std::unique_ptr<Database> database = opened(place);
    std::int64_t added = 0;
    const double add_time = add_all(*database, runs, added);
    const double rate = static_cast<double>(added) / add_time;
    std::printf("added        %lld runs, %.0f a second\n", static_cast<long long>(added), rate);
    if (!bare_place.empty()) {
        const std::unique_ptr<Database> bare = opened(bare_place);
        bare->transact([](soci::session& session) {
            for (int i = 0; i < 1000; ++i) {
                Statement(session, "insert into units (serial) values (:a)", "t")
                    .run({std::to_string(i)});
            }
        });
        const double bare_rate = static_cast<double>(runs) / bare_loop(*bare, runs);
        std::printf("bare loop    %.0f a second, ratio %.2f\n", bare_rate, bare_rate / rate);
    }
    std::printf("unit         %.1f ms\n", unit_seconds(*database) * 1000);
    std::printf("memory       %ld MB before the page\n", peak_megabytes());
    const std::string site = place.starts_with("postgres") ? "perf-site" : place + "-site";
    const Clock::time_point begin = Clock::now();
    const SiteResult result = write_site(*database, {site, plan_of(runs).end - 1, 2000});
    std::printf("page         %.1f s, %zu pages %s%s\n", seconds_since(begin), result.pages,
                result.problem.c_str(), result.store.words.c_str());
    std::printf("memory       %ld MB in all\n", peak_megabytes());
    return 0;
}

} // namespace

} // namespace wivex::line

int main(int argc, char** argv) {
    if (argc < 3 || argc > 4) {
        std::fprintf(stderr, "usage: wivex-line-perf DATABASE RUNS [DATABASE OF THE BARE LOOP]\n");
        return 2;
    }
    return wivex::line::start(argv[1], std::atol(argv[2]), argc == 4 ? argv[3] : "");
}

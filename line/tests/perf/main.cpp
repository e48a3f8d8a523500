// SPDX-License-Identifier: Apache-2.0
// wivex-line-perf DATABASE RUNS [DATABASE OF THE BARE LOOP]: how fast runs are added, beside a bare
// loop that inserts the same rows into the same tables with the same library, a transaction a
// report; how long a page and a unit take afterwards; how much memory it all needs. The texts of
// the reports are made outside of the time that counts. Processor time is that of this program.

#include "made_factory.hpp"
#include "program/adding.hpp"
#include "program/site.hpp"
#include "reader/report_reader.hpp"
#include "store/run_writers.hpp"
#include "store/unit_history.hpp"

#include <sys/resource.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>

namespace wivex::line {

namespace {

using Clock = std::chrono::steady_clock;

double seconds_of(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

rusage usage_now() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage;
}

// User and system time of this program, in seconds.
double processor() {
    const rusage usage = usage_now();
    return seconds_of(usage.ru_utime) + seconds_of(usage.ru_stime);
}

// Time that passed on the clock, and time that this program computed.
struct Stopwatch {
    template <typename Work>
    void count(Work work) {
        const Clock::time_point begin = Clock::now();
        const double used = processor();
        work();
        wall += std::chrono::duration<double>(Clock::now() - begin).count();
        computed += processor() - used;
    }

    double wall = 0;
    double computed = 0;
};

FactoryPlan plan_of(long runs) {
    FactoryPlan plan{.seed = 5, .defects = true};
    plan.units_a_day = static_cast<int>(runs / plan.days);
    return plan;
}

void require_good(const StoreResult& result) {
    if (!result.good()) {
        std::fprintf(stderr, "%s\n", result.words.c_str());
        std::exit(1);
    }
}

Report report_of(const WrittenReport& written, const std::string& text) {
    Report report;
    report.path = "/reports/" + written.serial + "/run.json";
    std::string reason;
    if (read_report(text, "", report, reason) != ReadResult::good) {
        std::fprintf(stderr, "%s\n", reason.c_str());
        std::exit(1);
    }
    return report;
}

void tell(const char* what, std::int64_t runs, const Stopwatch& watch) {
    const auto count = static_cast<double>(runs);
    std::printf("%-12s %lld runs, %.0f a second, %.0f us of processor each\n", what,
                static_cast<long long>(runs), count / watch.wall, watch.computed / count * 1e6);
}

std::int64_t add_all(Database& database, long runs, Stopwatch& all) {
    Adding adding(database, 0, [](const Incoming&, const Added&) {});
    Stopwatch reading;
    make_factory(plan_of(runs), [&](const WrittenReport& written, Moment) {
        const std::string text = written.text();
        all.count([&] {
            Incoming file;
            reading.count([&] { file = report_of(written, text); });
            require_good(adding.take(file) ? StoreResult{} : adding.result());
        });
    });
    const auto added = static_cast<std::int64_t>(adding.totals().runs);
    tell("added", added, all);
    tell("  reading", added, reading);
    return added;
}

// A row a statement, into all tables that a report fills.
class BareLoop {
public:
    explicit BareLoop(soci::session& session) : to_(session) {}

    void add(const Report& report) {
        std::int64_t unit = 1;
        to_.units.write({{report.serial}}, [&](const Statement& row) { unit = row.count(1); });
        for (const RunRecord& run : report.runs) {
            Row row = run.row;
            row[run_place("unit_no")] = unit;
            row[run_place("added_utc_s")] = std::int64_t{0};
            std::int64_t run_no = 0;
            to_.runs.write({row}, [&](const Statement& found) { run_no = found.count(1); });
            add_parts(run_no, run.causes, to_.causes);
            add_parts(run_no, run.limits, to_.limits);
            add_parts(run_no, report.notes, to_.notes);
            for (const std::string& mac : run.macs) {
                to_.macs.write({{mac, unit}});
            }
        }
    }

private:
    static void add_parts(std::int64_t run_no, const std::vector<Row>& rows, TableWriter& writer) {
        for (Row row : rows) {
            row.front() = run_no;
            writer.write({row});
        }
    }

    RunWriters to_;
};

void bare_loop(Database& database, long runs, Stopwatch& all) {
    std::unique_ptr<BareLoop> loop;
    std::int64_t done = 0;
    make_factory(plan_of(runs), [&](const WrittenReport& written, Moment) {
        const Report report = report_of(written, written.text());
        all.count([&] {
            const StoreResult result = database.transact([&](soci::session& session) {
                if (!loop) {
                    loop = std::make_unique<BareLoop>(session);
                }
                loop->add(report);
            });
            require_good(result);
        });
        ++done;
    });
    tell("bare loop", done, all);
}

void measure_unit(Database& database, long runs) {
    UnitHistory unit;
    Stopwatch watch;
    watch.count([&] {
        database.read([&](soci::session& session) {
            UnitReader reader(session);
            for (const std::int64_t unit_no : reader.find(std::to_string(100'000 + runs / 2))) {
                reader.read(unit_no, unit);
            }
        });
    });
    std::printf("unit         %.1f ms%s\n", watch.wall * 1000, unit.runs.empty() ? ", none" : "");
}

std::unique_ptr<Database> opened(const std::string& place) {
    std::unique_ptr<Database> database;
    const StoreResult result = Database::open(place, true, database);
    require_good(result);
    return database;
}

void start(const std::string& place, long runs, const std::string& bare_place) {
    Stopwatch adding;
    const std::unique_ptr<Database> database = opened(place);
    add_all(*database, runs, adding);
    if (!bare_place.empty()) {
        Stopwatch bare;
        bare_loop(*opened(bare_place), runs, bare);
        std::printf("ratio        %.2f by the clock, %.2f of processor\n", adding.wall / bare.wall,
                    adding.computed / bare.computed);
    }
    measure_unit(*database, runs);
    std::printf("memory       %ld MB before the page\n", usage_now().ru_maxrss / 1024);
    const std::string site = place.starts_with("postgres") ? "perf-site" : place + "-site";
    SiteResult result;
    Stopwatch page;
    page.count([&] { result = write_site(*database, {site, plan_of(runs).end - 1, 2000}); });
    std::printf("page         %.1f s, %.1f s of processor, %zu pages %s%s\n", page.wall,
                page.computed, result.pages, result.problem.c_str(), result.store.words.c_str());
    std::printf("memory       %ld MB in all\n", usage_now().ru_maxrss / 1024);
}

} // namespace

} // namespace wivex::line

int main(int argc, char** argv) {
    if (argc < 3 || argc > 4) {
        std::fprintf(stderr, "usage: wivex-line-perf DATABASE RUNS [DATABASE OF THE BARE LOOP]\n");
        return 2;
    }
    try {
        wivex::line::start(argv[1], std::atol(argv[2]), argc == 4 ? argv[3] : "");
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "wivex-line-perf: %s\n", error.what());
        return 1;
    }
}

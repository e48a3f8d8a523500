// SPDX-License-Identifier: Apache-2.0
#include "common/words.hpp"
#include "program/command.hpp"
#include "store/factory_walk.hpp"

#include <cstdio>

namespace wivex::line {

namespace {

constexpr std::size_t most_units = 100'000;

struct CheckOptions {
    std::size_t last = 100;
    double yield = 0;
    bool stations = false;
    std::string silent;
    Moment silent_seconds = 0;
    std::string at;
};

// Says how one check came out; true when it is met.
bool tell(bool good, const std::string& words) {
    std::printf("%s  %s\n", good ? "ok    " : "NOT OK", words.c_str());
    return good;
}

bool check_yield(const Factory& factory, const CheckOptions& options) {
    const Share share = factory.newest_first(options.last);
    const std::string words =
        "first-pass yield of the last " +
        report::count_text(static_cast<std::uint64_t>(share.all), "unit", "units") + ": ";
    if (share.all < static_cast<std::int64_t>(options.last)) {
        return tell(false, words + "not known, fewer than " + std::to_string(options.last));
    }
    return tell(share.rate() * 100 >= options.yield,
                words + report::figure_text(share.rate() * 100) + " %, at least " +
                    report::figure_text(options.yield) + " % wanted");
}

bool check_stations(const Factory& factory) {
    bool good = true;
    for (const StationCause& row : factory.comparisons()) {
        if (row.marked) {
            good = tell(false, "station " + row.station + " deviates: " + row.cause + " in " +
                                   std::to_string(row.count) + " of " + std::to_string(row.firsts) +
                                   " first attempts");
        }
    }
    if (factory.stations().empty()) {
        return tell(false, "stations: not known, no first attempt in 30 days");
    }
    return good ? tell(true, "no station deviates") : false;
}

bool check_silence(const std::optional<Moment>& newest, Moment now, const CheckOptions& options) {
    if (!newest) {
        return tell(false, "last run: none with a date");
    }
    return tell(now - *newest <= options.silent_seconds,
                "last run " + report::duration_text(static_cast<double>(now - *newest)) +
                    " ago, at most " + options.silent + " wanted");
}

int run_check(const CheckOptions& options, const Context& context) {
    const Moment now = moment_at(options.at);
    const std::unique_ptr<Database> database = opened(context, false);
    if (!database) {
        return exit_status::failed;
    }
    Factory factory(now, options.last);
    std::optional<Moment> newest;
    const StoreResult result = database->read([&](soci::session& session) {
        if (options.yield > 0 || options.stations) {
            walk_units(session, factory);
        }
        newest = newest_run(session, now);
    });
    if (!result.good()) {
        return complain_of(context, result);
    }
    bool good = true;
    if (options.yield > 0) {
        good = check_yield(factory, options) && good;
    }
    if (options.stations) {
        good = check_stations(factory) && good;
    }
    if (options.silent_seconds > 0) {
        good = check_silence(newest, now, options) && good;
    }
    return good ? exit_status::done : exit_status::attention;
}

std::function<int()> declare_check(CLI::App& app, const Context& context) {
    const auto options = std::make_shared<CheckOptions>();
    app.add_option("--yield", options->yield,
                   "The first-pass yield of the last units is at least this.")
        ->type_name("PERCENT")
        ->check(CLI::Range(0.001, 100.0));
    app.add_option("--last", options->last, "So many units are the last ones.")
        ->type_name("N")
        ->capture_default_str()
        ->check(CLI::Range(std::size_t{1}, most_units));
    app.add_flag("--stations", options->stations, "No station deviates from the others.");
    app.add_option("--silent", options->silent, "The last run is no longer ago: 90s, 30m, 1h, 1d.")
        ->type_name("SPAN")
        ->check([](const std::string& text) -> std::string {
            return span_of(text) ? "" : "a span like 30m or 1h is needed";
        });
    declare_at(app, options->at);
    return [options, &context] {
        options->silent_seconds = span_of(options->silent).value_or(0);
        if (options->yield <= 0 && !options->stations && options->silent_seconds == 0) {
            return complain(exit_status::usage,
                            "nothing to check: give --yield, --stations or --silent");
        }
        return run_check(*options, context);
    };
}

} // namespace

const Command check_command{"check", "Check the line; exit with 1 when something is not as wanted",
                            declare_check};

} // namespace wivex::line

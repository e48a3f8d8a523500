// SPDX-License-Identifier: Apache-2.0
#include "program/options.hpp"

#include "common/words.hpp"
#include "model/modes.hpp"
#include "program/limit_options.hpp"
#include "program/session.hpp"

#include <CLI/CLI.hpp>
#include <cstdio>
#include <vector>

namespace wivex::report {

namespace {

std::vector<std::string> mode_letters() {
    std::vector<std::string> letters;
    for (const ModeRow& row : mode_rows()) {
        if (row.letter != 0) {
            letters.emplace_back(1, row.letter);
        }
    }
    return letters;
}

void declare_limits(CLI::App& app, Options& options) {
    app.add_option("--limit", options.limit_texts,
                   "What a figure may be at least or at most, as throughput>=30, dhcp<=5s or "
                   "associate.p95<=4s. May be given again.")
        ->type_name("LIMIT")
        ->allow_extra_args(false);
    app.add_option("--limits", options.limits_file, "The same from FILE, one a line.")
        ->type_name("FILE");
}

void declare_comparison(CLI::App& app, Options& options) {
    CLI::Option* const compare =
        app.add_option(
               "--compare", options.compare,
               "Compare two run.json of one mode instead of reading a console; with --out "
               "write compare.html into DIR. Exit with 1 when AFTER is significantly worse.")
            ->type_name("BEFORE AFTER")
            ->expected(2);
    for (const char* const other :
         {"console", "--live", "--iterations", "--mode", "--saved", "--refresh", "--serial",
          "--part", "--station", "--attempt", "--operator", "--fact", "--identity", "--on-device",
          "--interface", "--quiet", "--check", "--limit", "--limits"}) {
        compare->excludes(other);
    }
}

void declare(CLI::App& app, Options& options) {
    app.add_option("console", options.console,
                   "Saved console to read. Without it, or as -, the console is read from standard "
                   "input and passed on to standard output.")
        ->type_name("FILE");
    app.add_flag("--live", options.live,
                 "Show the run while it goes on. On a terminal instead of the console.");
    app.add_option("--out", options.out, "Write report.html, junit.xml and run.json into DIR.")
        ->type_name("DIR");
    app.add_option(
           "--iterations", options.iterations,
           "Iterations that the run will have (the -m of wivex): for the time left, and a run "
           "with fewer has not passed.")
        ->type_name("N");
    const std::vector<std::string> letters = mode_letters();
    app.add_option("--mode", options.mode,
                   "The mode of the run as the option letter of wivex: " + listed(letters, "or") +
                       ". Only needed when every iteration failed before the supplicant could be "
                       "reached.")
        ->type_name("LETTER")
        ->check(CLI::IsMember(letters));
    app.add_option("--refresh", options.refresh,
                   "Seconds between reports while the run goes on; 0: only at its end.")
        ->type_name("SECONDS")
        ->capture_default_str()
        ->check(CLI::Range(0, 86400));
    app.add_flag("--saved", options.saved,
                 "Standard input is a saved console: do not take arrival times for its times.");
    app.add_flag("--quiet", options.quiet, "Do not pass the console on.");
    app.add_flag("--check", options.check,
                 "Exit with 1 unless every run passed and is within the limits: what cannot be "
                 "judged has not and is not.");
    declare_limits(app, options);
    declare_identity(app, options.identity);
    app.set_version_flag("--version", "wivex-report 1.0");
    declare_comparison(app, options);
}

} // namespace

std::optional<Options> read_options(int argc, char** argv, int& status) {
    CLI::App app("Shows a run of wivex while it goes on, and reports it afterwards.",
                 "wivex-report");
    Options options;
    declare(app, options);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        status = app.exit(error) == 0 ? exit_status::done : exit_status::usage;
        return {};
    }
    const std::string problem =
        read_limits(options.limit_texts, options.limits_file, options.limits);
    if (!problem.empty()) {
        std::fprintf(stderr, "wivex-report: %s\n", problem.c_str());
        status = exit_status::usage;
        return {};
    }
    return options;
}

} // namespace wivex::report

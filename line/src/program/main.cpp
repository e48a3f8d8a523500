// SPDX-License-Identifier: Apache-2.0
// wivex-line: what a whole production line knows.

#include "program/command.hpp"

#include <cstdio>
#include <exception>
#include <vector>

namespace wivex::line {

namespace {

struct Declared {
    CLI::App* app;
    std::function<int()> run;
};

int start(int argc, char** argv) {
    CLI::App app("Collects the reports of wivex-report of a whole production line, and shows what "
                 "they tell together.",
                 "wivex-line");
    Context context;
    app.add_option("--db", context.database,
                   "The database: a file of SQLite, or postgresql://HOST/NAME.")
        ->type_name("DATABASE")
        ->capture_default_str();
    app.set_version_flag("--version", "wivex-line 1.0");
    app.require_subcommand(1);
    app.fallthrough();
    std::vector<Declared> declared;
    for (const Command& command : commands()) {
        CLI::App* const sub = app.add_subcommand(command.name, command.summary);
        declared.push_back({sub, command.declare(*sub, context)});
    }
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? exit_status::done : exit_status::usage;
    }
    for (const Declared& command : declared) {
        if (command.app->parsed()) {
            return command.run();
        }
    }
    return exit_status::usage;
}

} // namespace

} // namespace wivex::line

int main(int argc, char** argv) {
    try {
        const int status = wivex::line::start(argc, argv);
        if (std::fflush(stdout) != 0) {
            std::fprintf(stderr, "wivex-line: standard output could not be written\n");
            return wivex::line::exit_status::failed;
        }
        return status;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "wivex-line: %s\n", error.what());
        return wivex::line::exit_status::failed;
    }
}

// SPDX-License-Identifier: Apache-2.0
// wivex-report: shows a run of wivex while it goes on, and reports it afterwards.

#include "common/unique_file.hpp"
#include "guard/guard.hpp"
#include "program/session.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <string>
#include <string_view>

namespace wivex::report {

namespace {

struct Arguments {
    std::string console;
    std::string out;
    std::string mode;
    std::uint32_t iterations = 0;
    int refresh = 60;
    bool live = false;
    bool quiet = false;
    bool saved = false;
    bool check = false;
};

void declare(CLI::App& app, Arguments& arguments) {
    app.add_option("console", arguments.console,
                   "Saved console to read. Without it, or as -, the console is read from standard "
                   "input and passed on to standard output.")
        ->type_name("FILE");
    app.add_flag("--live", arguments.live,
                 "Show the run while it goes on. On a terminal instead of the console.");
    app.add_option("--out", arguments.out, "Write report.html, junit.xml and run.json into DIR.")
        ->type_name("DIR");
    app.add_option(
           "--iterations", arguments.iterations,
           "Iterations that the run will have (the -m of wivex): for the time left, and a run "
           "with fewer has not passed.")
        ->type_name("N");
    app.add_option("--mode", arguments.mode,
                   "The mode of the run as the option letter of wivex: w, d, g, c, S or A. Only "
                   "needed when every iteration failed before the supplicant could be reached.")
        ->type_name("LETTER")
        ->check(CLI::IsMember({"w", "d", "g", "c", "S", "A"}));
    app.add_option("--refresh", arguments.refresh,
                   "Seconds between reports while the run goes on; 0: only at its end.")
        ->type_name("SECONDS")
        ->capture_default_str()
        ->check(CLI::Range(0, 86400));
    app.add_flag("--saved", arguments.saved,
                 "Standard input is a saved console: do not take arrival times for its times.");
    app.add_flag("--quiet", arguments.quiet, "Do not pass the console on.");
    app.add_flag("--check", arguments.check,
                 "Exit with 1 unless every run passed: what cannot be judged has not.");
    app.set_version_flag("--version", "wivex-report 1.0");
}

bool can_redraw(int fd) {
    const char* const terminal = std::getenv("TERM");
    return isatty(fd) == 1 && terminal != nullptr && *terminal != '\0' &&
           std::string_view(terminal) != "dumb";
}

SessionOptions session_options(const Arguments& arguments, bool from_file) {
    SessionOptions options;
    options.out = arguments.out;
    options.refresh = from_file ? 0 : arguments.refresh;
    options.check = arguments.check;
    options.reader.iterations = arguments.iterations;
    if (from_file) {
        options.name = arguments.console;
    }
    options.reader.arrival_times = !from_file && !arguments.saved;
    if (!arguments.mode.empty()) {
        options.reader.mode = mode_of_option(arguments.mode.front());
    }
    options.summary_fd = from_file ? STDOUT_FILENO : STDERR_FILENO;
    if (arguments.live) {
        // A standard output that is no terminal belongs to the console's bytes.
        options.live_fd = isatty(STDOUT_FILENO) == 1 || from_file ? STDOUT_FILENO : STDERR_FILENO;
        options.live.redraw = can_redraw(options.live_fd);
        options.live.iterations = arguments.iterations;
    }
    return options;
}

int run(const Arguments& arguments) {
    const bool from_file = !arguments.console.empty() && arguments.console != "-";
    const SessionOptions options = session_options(arguments, from_file);
    if (from_file) {
        const UniqueFile file(open(arguments.console.c_str(), O_RDONLY | O_CLOEXEC));
        if (!file.is_open()) {
            std::fprintf(stderr, "wivex-report: cannot read %s: %s\n", arguments.console.c_str(),
                         std::strerror(errno));
            return exit_status::usage;
        }
        struct stat status {};
        if (fstat(file.get(), &status) == 0 && S_ISDIR(status.st_mode)) {
            std::fprintf(stderr, "wivex-report: %s is a directory\n", arguments.console.c_str());
            return exit_status::usage;
        }
        return run_session(file.get(), options);
    }
    const bool pass_through = !arguments.quiet && options.live_fd != STDOUT_FILENO;
    return read_guarded(pass_through, [&](int fd) { return run_session(fd, options); });
}

} // namespace

int start(int argc, char** argv) {
    CLI::App app("Shows a run of wivex while it goes on, and reports it afterwards.",
                 "wivex-report");
    Arguments arguments;
    declare(app, arguments);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        const int status = app.exit(error);
        return status == 0 ? exit_status::done : exit_status::usage;
    }
    return run(arguments);
}

} // namespace wivex::report

int main(int argc, char** argv) {
    try {
        return wivex::report::start(argc, argv);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "wivex-report: %s\n", error.what());
        return wivex::report::exit_status::not_written;
    }
}

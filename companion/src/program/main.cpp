// SPDX-License-Identifier: Apache-2.0
// wivex-report: shows a run of wivex while it goes on, and reports it afterwards.

#include "common/unique_file.hpp"
#include "guard/guard.hpp"
#include "program/compare.hpp"
#include "program/options.hpp"
#include "program/session.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <string_view>

namespace wivex::report {

namespace {

bool can_redraw(int fd) {
    const char* const terminal = std::getenv("TERM");
    return isatty(fd) == 1 && terminal != nullptr && *terminal != '\0' &&
           std::string_view(terminal) != "dumb";
}

SessionOptions session_options(const Options& options) {
    const bool from_file = options.reads_file();
    SessionOptions session;
    session.out = options.out;
    session.refresh = from_file ? 0 : options.refresh;
    session.check = options.check;
    session.reader.iterations = options.iterations;
    session.reader.limits = options.limits;
    if (from_file) {
        session.name = options.console;
    }
    session.reader.arrival_times = !from_file && !options.saved;
    if (!options.mode.empty()) {
        session.reader.mode = mode_of_option(options.mode.front());
    }
    session.summary_fd = from_file ? STDOUT_FILENO : STDERR_FILENO;
    if (options.live) {
        // A standard output that is no terminal belongs to the console's bytes.
        session.live_fd = isatty(STDOUT_FILENO) == 1 || from_file ? STDOUT_FILENO : STDERR_FILENO;
        session.live.redraw = can_redraw(session.live_fd);
        session.live.iterations = options.iterations;
    }
    return session;
}

int read_file(const char* path, const SessionOptions& session) {
    const UniqueFile file(open(path, O_RDONLY | O_CLOEXEC));
    if (!file.is_open()) {
        std::fprintf(stderr, "wivex-report: cannot read %s: %s\n", path, std::strerror(errno));
        return exit_status::usage;
    }
    struct stat status {};
    if (fstat(file.get(), &status) == 0 && S_ISDIR(status.st_mode)) {
        std::fprintf(stderr, "wivex-report: %s is a directory\n", path);
        return exit_status::usage;
    }
    return run_session(file.get(), session);
}

int run(const Options& options) {
    if (!options.compare.empty()) {
        return run_comparison(options.compare.front(), options.compare.back(), options.out);
    }
    SessionOptions session = session_options(options);
    const std::string problem =
        settle_identity(options.identity, options.out, session.reader.identity);
    if (!problem.empty()) {
        std::fprintf(stderr, "wivex-report: %s\n", problem.c_str());
        return exit_status::usage;
    }
    if (options.reads_file()) {
        return read_file(options.console.c_str(), session);
    }
    const bool pass_through = !options.quiet && session.live_fd != STDOUT_FILENO;
    return read_guarded(pass_through, [&](int fd) { return run_session(fd, session); });
}

} // namespace

int start(int argc, char** argv) {
    int status = exit_status::done;
    const std::optional<Options> options = read_options(argc, argv, status);
    return options ? run(*options) : status;
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

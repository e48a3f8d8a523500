// SPDX-License-Identifier: Apache-2.0
// wivex-doctor: is this device ready for a run of wivex, and if not, why.

#include "checks.hpp"
#include "report.hpp"

#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>

namespace wivex::doctor {

namespace {

constexpr int ready = 0;
constexpr int not_ready = 1;
constexpr int wrong_usage = 2;

constexpr const char* usage =
    "usage: wivex-doctor [--scan] [--json] [--quiet] OPTIONS-OF-THE-RUN\n"
    "\n"
    "Looks whether this device is ready for \"wivex OPTIONS-OF-THE-RUN\", and tells what is not, "
    "what\n"
    "the run will print because of it, and what mends it. It changes nothing. Run it as root.\n"
    "\n"
    "  --scan     let the supplicant look for the access point of -w\n"
    "  --json     one JSON object\n"
    "  --quiet    only what is not good\n"
    "  --help, --version\n"
    "\n"
    "The options of the run are those of wivex: one of -A -l -M -S[PREFIX] -d -g -w -c at least, "
    "and\n"
    "-F[FILE] -R[FILE] -D[FILE] -m N -i N -o WORD -u.\n"
    "\n"
    "Exit status: 0 ready, 1 not ready or not known, 2 wrong usage.\n";

// A report that did not get through is no good news.
int print(const std::string& text, int status) {
    if (std::fputs(text.c_str(), stdout) < 0 || std::fflush(stdout) != 0) {
        std::perror("wivex-doctor: standard output");
        return status == ready ? not_ready : status;
    }
    return status;
}

bool wants_colours() {
    const char* const refused = std::getenv("NO_COLOR");
    const bool wanted = refused == nullptr || refused[0] == '\0';
    return wanted && isatty(STDOUT_FILENO) == 1;
}

int run(int argc, char* argv[]) {
    const Request request = parse_request(argc, argv);
    switch (request.wish) {
    case Request::Wish::help:
        return print(usage, ready);
    case Request::Wish::version:
        return print("wivex-doctor " WIVEX_VERSION "\n", ready);
    case Request::Wish::refuse:
        std::fputs(usage, stderr);
        return wrong_usage;
    case Request::Wish::check:
        break;
    }
    const std::vector<Point> points = check_all(request);
    const int status = is_ready(points) ? ready : not_ready;
    return print(request.json ? as_json(request, points)
                              : as_text(request, points, wants_colours()),
                 status);
}

} // namespace

} // namespace wivex::doctor

int main(int argc, char* argv[]) {
    std::signal(SIGPIPE, SIG_IGN);
    try {
        return wivex::doctor::run(argc, argv);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "wivex-doctor: %s\n", failure.what());
        return 1;
    }
}

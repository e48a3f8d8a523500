// SPDX-License-Identifier: Apache-2.0
#include "program/session.hpp"

#include "common/bytes.hpp"
#include "model/identity.hpp"
#include "model/limit_verdict.hpp"
#include "model/verdict.hpp"
#include "writers/report_files.hpp"
#include "writers/summary.hpp"

#include <poll.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <exception>
#include <vector>

namespace wivex::report {

namespace {

constexpr std::size_t chunk_size = std::size_t{256} * 1024;
constexpr int redraw_interval = 1000;
constexpr double shortest_redraw = 0.25;
constexpr int low_priority = 10;

double steady_seconds() {
    using namespace std::chrono;
    return duration<double>(steady_clock::now().time_since_epoch()).count();
}

class Session {
public:
    Session(int fd, const SessionOptions& options)
        : fd_(fd), options_(options), reader_(options.reader), live_(options.live),
          reported_(steady_seconds()) {}

    int run() {
        std::vector<char> buffer(chunk_size);
        for (;;) {
            if (!wait_for_input()) {
                refresh();
                continue;
            }
            const long length = read_some(fd_, buffer);
            if (length <= 0) {
                read_error_ = length < 0 ? errno : 0;
                break;
            }
            reader_.feed({buffer.data(), static_cast<std::size_t>(length)}, steady_seconds());
            refresh();
        }
        reader_.finish(steady_seconds());
        return finish();
    }

private:
    // False when a second passed without any.
    bool wait_for_input() const {
        if (options_.live_fd < 0 && (options_.out.empty() || options_.refresh == 0)) {
            return true;
        }
        pollfd entry{fd_, POLLIN, 0};
        return poll(&entry, 1, redraw_interval) != 0;
    }

    void refresh() {
        const double now = steady_seconds();
        if (options_.live_fd >= 0 && now - drawn_ >= shortest_redraw) {
            drawn_ = now;
            winsize size{};
            if (ioctl(options_.live_fd, TIOCGWINSZ, &size) == 0 && size.ws_col != 0) {
                live_.set_columns(size.ws_col);
            }
            write_all(options_.live_fd, live_.update(reader_.progress(), now));
        }
        if (!options_.out.empty() && options_.refresh > 0 && now - reported_ >= options_.refresh) {
            reported_ = now;
            report_in_between();
        }
    }

    // In a process of its own, which sees the model as it stands: a slow or full disk does not
    // hold up the console.
    void report_in_between() {
        if (writer_ > 0 && waitpid(writer_, nullptr, WNOHANG) == 0) {
            return;
        }
        writer_ = fork();
        if (writer_ == 0) {
            if (nice(low_priority) == -1) {
                // It then runs at the priority that it has.
            }
            write_report(reader_.log(), options_.out);
            _exit(0);
        }
    }

    // The summary says them too: whoever keeps only standard error sees them as well.
    void warn() {
        const int summary_fd = options_.live_fd >= 0 ? options_.live_fd : options_.summary_fd;
        if (summary_fd == STDERR_FILENO) {
            return;
        }
        for (const std::string& warning : identity_warnings(reader_.log())) {
            std::fprintf(stderr, "wivex-report: WARNING: %s\n", warning.c_str());
        }
    }

    int finish() {
        if (options_.live_fd >= 0) {
            write_all(options_.live_fd, live_.finish(reader_.progress()));
        } else {
            write_all(options_.summary_fd, summary(reader_.log()));
        }
        warn();
        if (!options_.out.empty()) {
            if (writer_ > 0) {
                waitpid(writer_, nullptr, 0);
            }
            const std::string problem = write_report(reader_.log(), options_.out);
            if (!problem.empty()) {
                std::fprintf(stderr, "wivex-report: %s\n", problem.c_str());
                return exit_status::not_written;
            }
        }
        if (reader_.log().runs.empty()) {
            std::fprintf(stderr, "wivex-report: no run found in %s\n", options_.name.c_str());
            return exit_status::usage;
        }
        if (read_error_ != 0) {
            std::fprintf(stderr, "wivex-report: cannot read %s to its end: %s\n",
                         options_.name.c_str(), std::strerror(read_error_));
            return exit_status::usage;
        }
        const bool passed =
            judge(reader_.log()) == RunVerdict::passed && are_kept(judge_limits(reader_.log()));
        return passed || !options_.check ? exit_status::done : exit_status::run_failed;
    }

    int fd_;
    const SessionOptions& options_;
    RunReader reader_;
    LiveView live_;
    double drawn_ = 0;
    double reported_ = 0;
    pid_t writer_ = -1;
    int read_error_ = 0;
};

} // namespace

int run_session(int fd, const SessionOptions& options) {
    try {
        return Session(fd, options).run();
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "wivex-report: %s\n", problem.what());
        return exit_status::not_written;
    }
}

} // namespace wivex::report

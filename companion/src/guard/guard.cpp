// SPDX-License-Identifier: Apache-2.0
#include "guard/guard.hpp"

#include "common/bytes.hpp"
#include "common/unique_file.hpp"

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <vector>

namespace wivex::report {

namespace {

constexpr int internal_failure = 70;
constexpr std::size_t chunk_size = std::size_t{256} * 1024;
constexpr int pipe_size = 1024 * 1024;
// A report that stops reading may hold up the run for so long, once; then it is given up.
constexpr int patience = 5000;

struct Pipe {
    UniqueFile reading;
    UniqueFile writing;
};

bool make_pipe(Pipe& ends) {
    std::array<int, 2> fds{};
    if (pipe2(fds.data(), O_CLOEXEC) != 0) {
        return false;
    }
    ends.reading.reset(fds[0]);
    ends.writing.reset(fds[1]);
    fcntl(fds[1], F_SETPIPE_SZ, pipe_size);
    fcntl(fds[1], F_SETFL, O_NONBLOCK);
    return true;
}

// ^C goes to the whole pipeline: the tool answers it by writing its results, and its last lines
// have to be read. A reader of our output that went away must not end the run either.
void outlive_the_run() {
    signal(SIGINT, SIG_IGN);
    signal(SIGHUP, SIG_IGN);
    signal(SIGPIPE, SIG_IGN);
}

void give_up(UniqueFile& report, const char* reason) {
    report.reset();
    std::fprintf(stderr, "wivex-report: %s; the console is passed on, there is no report\n",
                 reason);
}

void move_bytes(bool pass_through, UniqueFile& report, pid_t child) {
    std::vector<char> buffer(chunk_size);
    for (;;) {
        const long length = read_some(STDIN_FILENO, buffer);
        if (length <= 0) {
            return;
        }
        const std::string_view bytes(buffer.data(), static_cast<std::size_t>(length));
        pass_through = pass_through && write_all(STDOUT_FILENO, bytes);
        if (report.is_open() && !write_within(report.get(), bytes, patience)) {
            give_up(report, "the report has stopped reading");
            kill(child, SIGKILL);
        }
    }
}

} // namespace

int read_guarded(bool pass_through, const std::function<int(int fd)>& analyse) {
    outlive_the_run();
    Pipe pipe;
    const pid_t child = make_pipe(pipe) ? fork() : -1;
    if (child == 0) {
        pipe.writing.reset();
        // Only the other process reads what the tool writes.
        close(STDIN_FILENO);
        _exit(analyse(pipe.reading.get()));
    }
    pipe.reading.reset();
    if (child < 0) {
        give_up(pipe.writing, "cannot start the report");
    }
    move_bytes(pass_through, pipe.writing, child);
    pipe.writing.reset();
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child || !WIFEXITED(status)) {
        return internal_failure;
    }
    return WEXITSTATUS(status);
}

} // namespace wivex::report

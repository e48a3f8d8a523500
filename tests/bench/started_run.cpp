// SPDX-License-Identifier: Apache-2.0
// The processes of a run: how it is started, read and waited for.

#include "bench_run.hpp"
#include "console.hpp"
#include "language/files.hpp"
#include "temporary_folder.hpp"
#include "world/program.hpp"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <utility>

namespace bench_test {

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

struct Pipe {
    std::array<int, 2> ends{-1, -1};

    Pipe() {
        if (pipe2(ends.data(), O_CLOEXEC) != 0) {
            std::abort();
        }
    }
    ~Pipe() {
        close_end(0);
        close_end(1);
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    void close_end(std::size_t end) {
        if (ends.at(end) >= 0) {
            close(std::exchange(ends.at(end), -1));
        }
    }
};

void open_more_descriptors(int count) {
    if (count == 0) {
        return;
    }
    rlimit limit{};
    getrlimit(RLIMIT_NOFILE, &limit);
    limit.rlim_cur = limit.rlim_max;
    setrlimit(RLIMIT_NOFILE, &limit);
    for (int opened = 0; opened < count; ++opened) {
        if (open("/dev/null", O_RDONLY) < 0) { // inherited on purpose
            _exit(125);
        }
    }
}

/// What the launcher begins with as its streams; -1 in `in` for a terminal, which is all three.
struct Streams {
    int in = -1;
    int out = -1;
    int err = -1;
};

// The run becomes the foreground job of its terminal: whoever types ^C there reaches all of it.
void take_terminal(int terminal) {
    setsid();
    if (ioctl(terminal, TIOCSCTTY, 0) != 0) {
        std::perror("TIOCSCTTY");
        _exit(125);
    }
}

[[noreturn]] void become(const std::vector<std::string>& words, const Streams& streams) {
    dup2(streams.in, STDIN_FILENO);
    dup2(streams.out, STDOUT_FILENO);
    dup2(streams.err, STDERR_FILENO);
    bench::become_program(words);
    _exit(125);
}

// Takes what there is to read; false at the end of the stream.
bool take(int fd, std::string& text) {
    std::array<char, 65536> buffer{};
    const ssize_t length = read(fd, buffer.data(), buffer.size());
    if (length > 0) {
        text.append(buffer.data(), static_cast<std::size_t>(length));
    }
    return length > 0;
}

// Collects both streams until they end; false when that takes longer than `limit`.
bool collect(int out, int err, BenchRun& run, Clock::time_point limit) {
    std::array<pollfd, 2> waiting{{{out, POLLIN, 0}, {err, POLLIN, 0}}};
    while (waiting[0].fd >= 0 || waiting[1].fd >= 0) {
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(limit - Clock::now()).count();
        if (left <= 0 || poll(waiting.data(), waiting.size(), static_cast<int>(left)) <= 0) {
            return false;
        }
        if (waiting[0].revents != 0 && !take(waiting[0].fd, run.out)) {
            waiting[0].fd = -1;
        }
        if (waiting[1].revents != 0 && !take(waiting[1].fd, run.err)) {
            waiting[1].fd = -1;
        }
    }
    return true;
}

void read_files(const std::string& folder, BenchRun& run) {
    if (!fs::exists(folder)) {
        return;
    }
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file()) {
            const std::string name = fs::relative(entry.path(), folder);
            run.files[name] = bench::read_file(entry.path()).value_or("");
        }
    }
}

void read_usage(BenchRun& run) {
    std::istringstream usage(run.files["usage"]);
    std::string name;
    double value = 0;
    while (usage >> name >> value) {
        if (name == "user_ms" || name == "system_ms") {
            run.processor_ms += value;
        } else if (name == "max_rss_kb") {
            run.max_rss_kb = static_cast<long>(value);
        } else if (name == "wall_ms") {
            run.wall_ms = value;
        }
    }
}

} // namespace

struct StartedRun::Ends {
    test_tools::TemporaryFolder folder{"bench-test"};
    Pipe in;
    Pipe out;
    Pipe err;
    pid_t launcher = -1;
    int status = 0;
    bool ended = false;

    bool has_ended() {
        ended = ended || waitpid(launcher, &status, WNOHANG) == launcher;
        return ended;
    }
    void wait() {
        if (!ended) {
            waitpid(launcher, &status, 0);
            ended = true;
        }
    }
};

StartedRun::StartedRun() : ends_(std::make_unique<Ends>()) {}

StartedRun::~StartedRun() {
    if (!ends_->has_ended()) {
        kill(ends_->launcher, SIGKILL);
        ends_->wait();
    }
}

bool StartedRun::shows(std::string_view text, std::chrono::milliseconds limit) {
    const auto end = Clock::now() + limit;
    while (run_.out.find(text) == std::string::npos) {
        pollfd waiting{ends_->out.ends[0], POLLIN, 0};
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()).count();
        if (left <= 0 || poll(&waiting, 1, static_cast<int>(left)) <= 0 ||
            !take(waiting.fd, run_.out)) {
            return false;
        }
    }
    return true;
}

std::string StartedRun::next_out() {
    std::string text = std::exchange(run_.out, {});
    if (text.empty()) {
        take(ends_->out.ends[0], text);
    }
    return text;
}

pid_t StartedRun::launcher() const {
    return ends_->launcher;
}

bool StartedRun::ends_unread(std::chrono::milliseconds limit) {
    const auto end = Clock::now() + limit;
    while (!ends_->has_ended() && Clock::now() < end) {
        usleep(2000);
    }
    return ends_->ended;
}

void StartedRun::type(std::string_view text) {
    [[maybe_unused]] const ssize_t written = write(ends_->in.ends[1], text.data(), text.size());
}

void StartedRun::close_input() {
    ends_->in.close_end(1);
}

BenchRun StartedRun::finish() {
    run_.timed_out =
        !collect(ends_->out.ends[0], ends_->err.ends[0], run_, limit_) ||
        !ends_unread(std::chrono::duration_cast<std::chrono::milliseconds>(limit_ - Clock::now()));
    if (run_.timed_out) {
        kill(ends_->launcher, SIGKILL);
    }
    ends_->wait();
    run_.status = WIFEXITED(ends_->status) ? WEXITSTATUS(ends_->status) : -1;
    read_files(ends_->folder.path() + "/out", run_);
    read_usage(run_);
    return std::move(run_);
}

BenchRun StartedRun::abandon() {
    kill(ends_->launcher, SIGKILL);
    BenchRun run = finish();
    run.timed_out = true;
    return run;
}

std::unique_ptr<StartedRun> Bench::start() {
    std::unique_ptr<StartedRun> started(new StartedRun);
    StartedRun::Ends& ends = *started->ends_;
    started->limit_ = Clock::now() + limit_;
    const auto words = command_line(ends.folder.path());
    const pid_t parent = getpid();
    ends.launcher = fork();
    if (ends.launcher == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (getppid() != parent) {
            _exit(125);
        }
        Streams streams{ends.in.ends[0], ends.out.ends[1], ends.err.ends[1]};
        if (!out_file_.empty()) {
            streams.out = open(out_file_.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
        }
        if (console_ != nullptr) {
            streams.out = console_->run_end();
        }
        if (together_ || console_ != nullptr) {
            streams.err = streams.out;
        }
        if (console_ != nullptr && is_terminal(console_->kind())) {
            take_terminal(streams.out);
            streams.in = streams.out;
        }
        open_more_descriptors(open_descriptors_);
        become(words, streams);
    }
    ends.in.close_end(0);
    ends.out.close_end(1);
    ends.err.close_end(1);
    return started;
}

} // namespace bench_test

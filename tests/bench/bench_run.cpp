#include "bench_run.hpp"

#include "program.hpp"
#include "text.hpp"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
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

class Folder {
public:
    Folder() : path_("/tmp/bench-test-XXXXXX") {
        if (mkdtemp(path_.data()) == nullptr) {
            std::perror("mkdtemp");
            std::abort();
        }
    }
    ~Folder() {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    const std::string& path() const {
        return path_;
    }

private:
    std::string path_;
};

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

[[noreturn]] void become(const std::vector<std::string>& words, int in, int out, int err) {
    dup2(in, STDIN_FILENO);
    dup2(out, STDOUT_FILENO);
    dup2(err, STDERR_FILENO);
    bench::become_program(words);
    _exit(125);
}

// The tool starts late under a checker; a signal that goes by time waits for it, as long as the
// environment says.
std::string postponed(const std::string& signal) {
    const char* lateness = std::getenv("BENCH_CHECKER_STARTS_MS");
    const std::size_t begin = signal.find('@') + 1;
    const std::size_t end = std::min(signal.find_first_not_of("0123456789", begin), signal.size());
    if (lateness == nullptr || signal.substr(end) != "ms") {
        return signal;
    }
    const int moment_ms = std::atoi(signal.c_str() + begin) + std::atoi(lateness);
    return signal.substr(0, begin) + std::to_string(moment_ms) + "ms";
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

std::vector<std::string> lines_of(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

} // namespace

std::optional<std::string> BenchRun::result_file() const {
    const auto found = files.find("root/WIFIResult");
    return found == files.end() ? std::nullopt : std::optional<std::string>(found->second);
}

std::vector<std::pair<long long, std::string>> BenchRun::timed_commands() const {
    std::vector<std::pair<long long, std::string>> commands;
    const auto log = files.find("supplicant.log");
    if (log == files.end()) {
        return commands;
    }
    for (const std::string& line : lines_of(log->second)) {
        const auto words = bench::split_words(line);
        if (words && words->size() == 3 && words->at(2).text != "ATTACH" &&
            words->at(2).text != "DETACH") {
            commands.emplace_back(std::stoll(words->at(0).text), words->at(2).text);
        }
    }
    return commands;
}

std::vector<std::string> BenchRun::commands() const {
    std::vector<std::string> texts;
    for (const auto& [time, text] : timed_commands()) {
        texts.push_back(text);
    }
    return texts;
}

std::vector<double> BenchRun::signals_sent_ms() const {
    std::vector<double> times;
    const auto found = files.find("signals");
    if (found != files.end()) {
        for (const std::string& line : lines_of(found->second)) {
            times.push_back(std::stod(line));
        }
    }
    return times;
}

std::vector<std::string> BenchRun::sockets() const {
    const auto found = files.find("sockets");
    return found == files.end() ? std::vector<std::string>{} : lines_of(found->second);
}

Bench::Bench(std::string scenario) : scenario_(std::move(scenario)) {}

Bench& Bench::line(std::string_view text) {
    lines_ += std::string(text) + "\n";
    return *this;
}

Bench& Bench::set(const std::string& key, const std::string& value) {
    return option("--set", key + "=" + value);
}

Bench& Bench::args(std::vector<std::string> arguments) {
    arguments_ = std::move(arguments);
    return *this;
}

Bench& Bench::option(const std::string& name, const std::string& value) {
    options_.push_back(name);
    options_.push_back(value);
    return *this;
}

Bench& Bench::signal(const std::string& what_and_when) {
    signalled_ = true;
    return option("--signal", postponed(what_and_when));
}

Bench& Bench::input(std::string text) {
    input_ = std::move(text);
    return *this;
}

Bench& Bench::streams_together() {
    together_ = true;
    return *this;
}

Bench& Bench::at_most(std::chrono::seconds limit) {
    limit_ = limit;
    return *this;
}

Bench& Bench::out_file(std::string path) {
    out_file_ = std::move(path);
    return *this;
}

Bench& Bench::open_descriptors(int count) {
    open_descriptors_ = count;
    return *this;
}

std::vector<std::string> Bench::command_line(const std::string& folder) const {
    std::string scenario = lines_;
    if (!scenario_.empty()) {
        const std::string path = std::string(SCENARIO_FOLDER) + "/" + scenario_ + ".scenario";
        const auto text = bench::read_file(path);
        if (!text) {
            std::fprintf(stderr, "no scenario %s\n", path.c_str());
            std::abort();
        }
        scenario = *text + "\n" + lines_;
    }
    bench::write_file(folder + "/scenario", scenario);
    std::vector<std::string> words{BENCH_PROGRAM, "--scenario", folder + "/scenario", "--out",
                                   folder + "/out"};
    // A checker that a suite wants around the tool stands in the environment: one program for runs
    // that end by themselves, one for runs that signals end.
    const char* const checker =
        std::getenv(signalled_ ? "BENCH_CHECKER_OF_SIGNALS" : "BENCH_CHECKER");
    if (checker != nullptr) {
        words.insert(words.end(), {"--under", checker});
    }
    words.insert(words.end(), options_.begin(), options_.end());
    words.emplace_back("--");
    words.insert(words.end(), arguments_.begin(), arguments_.end());
    return words;
}

struct StartedRun::Ends {
    Folder folder;
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
    run_.timed_out = !collect(ends_->out.ends[0], ends_->err.ends[0], run_, limit_);
    if (run_.timed_out) {
        kill(ends_->launcher, SIGKILL);
    }
    ends_->wait();
    run_.status = WIFEXITED(ends_->status) ? WEXITSTATUS(ends_->status) : -1;
    read_files(ends_->folder.path() + "/out", run_);
    read_usage(run_);
    return std::move(run_);
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
        int out = ends.out.ends[1];
        if (!out_file_.empty()) {
            out = open(out_file_.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
        }
        open_more_descriptors(open_descriptors_);
        become(words, ends.in.ends[0], out, together_ ? out : ends.err.ends[1]);
    }
    ends.in.close_end(0);
    ends.out.close_end(1);
    ends.err.close_end(1);
    return started;
}

BenchRun Bench::run() {
    const auto started = start();
    started->type(input_);
    started->close_input();
    return started->finish();
}

} // namespace bench_test

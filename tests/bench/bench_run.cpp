#include "bench_run.hpp"

#include "text.hpp"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
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

[[noreturn]] void become(const std::vector<std::string>& words, int in, int out, int err) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    dup2(in, STDIN_FILENO);
    dup2(out, STDOUT_FILENO);
    dup2(err, STDERR_FILENO);
    std::vector<std::string> texts = words;
    std::vector<char*> arguments;
    for (std::string& text : texts) {
        arguments.push_back(text.data());
    }
    arguments.push_back(nullptr);
    execv(arguments[0], arguments.data());
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
bool collect(Pipe& out, Pipe& err, BenchRun& run, Clock::time_point limit) {
    std::array<pollfd, 2> waiting{{{out.ends[0], POLLIN, 0}, {err.ends[0], POLLIN, 0}}};
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
    words.insert(words.end(), options_.begin(), options_.end());
    words.emplace_back("--");
    words.insert(words.end(), arguments_.begin(), arguments_.end());
    return words;
}

BenchRun Bench::run() {
    const Folder folder;
    const auto words = command_line(folder.path());
    BenchRun run;
    Pipe in;
    Pipe out;
    Pipe err;
    const pid_t launcher = fork();
    if (launcher == 0) {
        become(words, in.ends[0], out.ends[1], together_ ? out.ends[1] : err.ends[1]);
    }
    in.close_end(0);
    out.close_end(1);
    err.close_end(1);
    [[maybe_unused]] const ssize_t written = write(in.ends[1], input_.data(), input_.size());
    in.close_end(1);
    run.timed_out = !collect(out, err, run, Clock::now() + limit_);
    if (run.timed_out) {
        kill(launcher, SIGKILL);
    }
    int status = 0;
    waitpid(launcher, &status, 0);
    run.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    read_files(folder.path() + "/out", run);
    read_usage(run);
    return run;
}

} // namespace bench_test

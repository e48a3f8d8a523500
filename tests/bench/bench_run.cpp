// SPDX-License-Identifier: Apache-2.0
#include "bench_run.hpp"

#include "language/files.hpp"
#include "language/text.hpp"
#include "text_parts.hpp"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <utility>

namespace bench_test {

namespace {

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

Bench& Bench::console(const Console& console) {
    console_ = &console;
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

BenchRun Bench::run() {
    const auto started = start();
    started->type(input_);
    started->close_input();
    return started->finish();
}

BenchRun run_wlan(Bench bench, int iterations) {
    return bench.args({"-w", "-m", std::to_string(iterations)}).run();
}

BenchRun run_quickly(Bench bench, const std::string& mode) {
    return bench.line(quick_address).faster(20).args({mode, "-m", "1"}).run();
}

} // namespace bench_test

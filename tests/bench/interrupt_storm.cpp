// Interrupts runs of all modes at random moments: while they compute, wait, are in a request, in
// the driver or have a child. SIGINT and SIGTERM take turns. Each run must end within a second with
// exit status 0, leave no socket, and an interrupted one a complete result file that says what the
// console had shown.
//
//     interrupt_storm --count 1000 --seed 1 --jobs 12
//     interrupt_storm --seed 1 --only 417
//
// The moments depend on the seed alone; --only repeats one run and shows its console. The time to
// the end counts from the moment at which the signal was really sent, however late a loaded machine
// came to it. Prints a summary; the exit status is 0 when every run ended well.

#include "bench_run.hpp"
#include "storm_verdict.hpp"

#include <getopt.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <mutex>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace bench_test {
namespace {

constexpr int earliest_ms = 20;

/// One run in so many gets the other signal too, this much later at most.
constexpr int runs_to_a_second_signal = 8;
constexpr int second_signal_ms = 3;

struct Settings {
    int count = 100;
    unsigned seed = 1;
    int jobs = 8;
    int only = -1;
};

/// A kind of run, and the span of it in which the interrupt falls.
struct Life {
    const char* name;
    const char* arguments;
    const char* scenario;
    const char* lines;
    int latest_ms;
    int weight;
};

constexpr const char* slow_address = "program udhcpc runs \"sleep 1\"\n"
                                     "program killall runs \"sleep 1\"";
constexpr const char* long_traffic =
    "config check_iperf=yes\nprogram iperf runs \"exec sleep 3\"\n"
    "program udhcpc runs \"sleep 1\"\nprogram killall runs \"exit 0\"";
constexpr const char* slow_server = "config p2p_iface_ip=192.168.49.2\n"
                                    "program killall runs \"sleep 1\"\n"
                                    "program udhcpd runs \"sleep 1\"";
constexpr const char* slow_registers = "program cat runs \"sleep 1; exec /bin/cat $*\"\n"
                                       "program stat runs \"sleep 1; exec /usr/bin/stat $*\"";

constexpr std::array<Life, 52> lives{{
    {"wlan: pass, real DHCP client", "-w", "", "", 6500, 4},
    {"wlan: pass, real iperf", "-w", "pass", "", 9000, 1},
    {"wlan: pass after pass", "-w", "", quick_address, 7000, 4},
    {"wlan: a long iperf", "-w", "", long_traffic, 7000, 4},
    {"wlan: DHCP server absent", "-w", "dhcp-server-absent", "", 6000, 3},
    {"wlan: DHCP client never found", "-w", "",
     "program udhcpc runs \"exit 0\"\nprogram killall runs \"exit 1\"", 3000, 3},
    {"wlan: failure after failure", "-w", "scan-refused", "module none", 7000, 4},
    {"wlan: interface down", "-w", "interface-down", "program ifconfig runs \"exit 0\"", 5000, 2},
    {"wlan: no supplicant", "-w", "supplicant-absent", "", 6000, 2},
    {"wlan: attaching refused", "-w", "attach-refused", "", 6000, 2},
    {"wlan: some iterations fail", "-w", "",
     "supplicant answers \"SCAN\" 2 with \"FAIL\\n\"\n"
     "supplicant answers \"DISABLE_NETWORK 0 \" 1 with \"FAIL\\n\"\n"
     "program udhcpc runs \"exit 1\"",
     8000, 2},
    {"wlan: no connection", "-w", "connection-never-comes", "", 5000, 3},
    {"wlan: disconnection never told", "-w", "disconnect-event-never-comes", quick_address, 4000,
     2},
    {"wlan: endless events on the console", "-w -u", "endless-event-flood", "", 4000, 3},
    {"wlan: forever busy", "-w", "scan-busy-forever", "", 3000, 3},
    {"wlan: no answer", "-w", "supplicant-never-answers", "", 5000, 3},
    {"wlan: supplicant dies and returns", "-w", "",
     "supplicant dies on \"SCAN\" 2\nsupplicant returns after 1s\n"
     "program udhcpc runs \"exit 0\"\nprogram killall runs \"exit 0\"",
     9000, 2},
    {"client: pass after pass", "-c", "", quick_address, 7000, 4},
    {"client: slow children", "-c", "", slow_address, 6000, 3},
    {"client: a long iperf", "-c", "", long_traffic, 7000, 3},
    {"client: DHCP server absent", "-c", "dhcp-server-absent", "", 6000, 2},
    {"client: search refused", "-c", "p2p-find-refused", "", 5000, 3},
    {"client: peer never found", "-c", "p2p-peer-never-found", "", 4000, 2},
    {"client: join never connects", "-c", "p2p-join-never-connects", "", 4000, 2},
    {"client: join refused", "-c", "p2p-connect-refused", "", 5000, 2},
    {"client: removal refused", "-c", "",
     "supplicant answers \"P2P_GROUP_REMOVE*\" 2 with \"FAIL\\n\"\n"
     "program udhcpc runs \"exit 0\"\nprogram killall runs \"exit 0\"",
     5000, 2},
    {"client: removal never told", "-c", "p2p-removal-never-told", quick_address, 5000, 3},
    {"client: no answer", "-c", "supplicant-never-answers", "", 5000, 2},
    {"device: the client, then again", "-d", "", quick_address, 15000, 3},
    {"device: the owner", "-d", "p2p-owner", slow_server, 15000, 2},
    {"device: peer asks first", "-d", "p2p-peer-asks-first", slow_address, 8000, 3},
    {"device: no address", "-d", "",
     "supplicant sends \"<3>P2P-GO-NEG-REQUEST 02:00:00:00:00:01\" on \"P2P_FIND\" after 100ms\n"
     "program udhcpc runs \"sleep 1; exit 1\"",
     8000, 2},
    {"device: search refused", "-d", "p2p-find-refused", "", 6000, 2},
    {"device: peer never found", "-d", "p2p-peer-never-found", "", 5000, 2},
    {"owner: three clients", "-g", "go-three-clients", slow_server, 9000, 4},
    {"owner: status shown", "-g -u", "go-three-clients", slow_server, 6000, 2},
    {"owner: client never associates", "-g", "go-client-never-associates", "", 6000, 2},
    {"owner: group refused", "-g", "go-group-refused", "", 5000, 2},
    {"owner: supplicant dies", "-g", "go-session-lost", "", 9000, 2},
    {"scan: pass after pass", "-SLINE", "scan-listing", "", 5000, 4},
    {"scan: a crowd", "-S -u", "scan-crowd", "", 5000, 3},
    {"scan: refused", "-S", "scan-trigger-refused", "", 5000, 3},
    {"scan: never ends", "-S", "scan-stays-forever", "", 2500, 2},
    {"scan: dump never ends", "-S", "scan-dump-cut", "", 2500, 2},
    {"loopback: in the driver", "-l", "loopback/broadcom-slow", "", 2000, 3},
    {"loopback: packets lost", "-l", "loopback/broadcom-lost", "", 5000, 3},
    {"loopback: registers", "-l -u", "loopback/ath6kl-pass", slow_registers, 8000, 4},
    {"address: registers", "-M", "mac/ath6kl-same", slow_registers, 8000, 4},
    {"address: target memory", "-M", "mac/combo-same", "", 4000, 2},
    {"mixture: diagnostics and wlan", "-l -M -w", "diagnostics-together", quick_address, 8000, 4},
    {"mixture: all modes, the scan runs", "-M -l -S -d -g -w -c", "scan-listing", "", 6000, 3},
    {"mixture: softAP behind a loopback", "-A -l -w", "loopback/broadcom-slow", "", 2000, 3},
}};

// ---- one run -----------------------------------------------------------------------------------

const Life& choose_life(std::mt19937& random) {
    std::vector<double> weights;
    weights.reserve(lives.size());
    for (const Life& life : lives) {
        weights.push_back(life.weight);
    }
    return lives.at(static_cast<std::size_t>(
        std::discrete_distribution<int>(weights.begin(), weights.end())(random)));
}

/// What is drawn for a run; all of it is needed to repeat it.
struct Attempt {
    const Life* life = nullptr;
    std::vector<std::string> signals;
    Judgement judgement;
    BenchRun run;

    std::string description() const {
        std::string text = std::string(life->name) + ":";
        for (const std::string& signal : signals) {
            text += " " + signal;
        }
        return text;
    }
};

std::vector<std::string> arguments_of(const Life& life) {
    std::istringstream words(life.arguments);
    std::vector<std::string> arguments;
    for (std::string word; words >> word;) {
        arguments.push_back(word);
    }
    arguments.insert(arguments.end(), {"-m", "1000"});
    return arguments;
}

std::vector<std::string> choose_signals(int index, const Life& life, std::mt19937& random) {
    const auto draw = [&random](int from, int to) {
        return std::uniform_int_distribution<int>(from, to)(random);
    };
    const std::array<std::string, 2> names{"INT", "TERM"};
    const auto first = static_cast<std::size_t>(index % 2);
    const int moment_ms = draw(earliest_ms, life.latest_ms);
    std::vector<std::string> signals{names.at(first) + "@" + std::to_string(moment_ms) + "ms"};
    if (draw(1, runs_to_a_second_signal) == 1) {
        const int later_ms = moment_ms + draw(0, second_signal_ms);
        signals.push_back(names.at(1 - first) + "@" + std::to_string(later_ms) + "ms");
    }
    return signals;
}

Attempt interrupt_once(int index, std::mt19937& random) {
    Attempt attempt;
    attempt.life = &choose_life(random);
    attempt.signals = choose_signals(index, *attempt.life, random);
    const auto arguments = arguments_of(*attempt.life);
    Bench bench(attempt.life->scenario);
    bench.line(attempt.life->lines).args(arguments).streams_together();
    for (const std::string& signal : attempt.signals) {
        bench.signal(signal);
    }
    attempt.run = bench.at_most(std::chrono::seconds(60)).run();
    attempt.judgement = judge(attempt.run, arguments);
    return attempt;
}

// ---- all runs ----------------------------------------------------------------------------------

class Storm {
public:
    explicit Storm(const Settings& settings) : settings_(settings) {}

    int run() {
        {
            std::vector<std::jthread> workers;
            workers.reserve(static_cast<std::size_t>(settings_.jobs));
            for (int job = 0; job < settings_.jobs; ++job) {
                workers.emplace_back([this] { work(); });
            }
        }
        return summarise();
    }

private:
    struct Reaction {
        double ms = 0;
        std::string description = "none";
    };

    void work() {
        for (int index = next_++; index < settings_.count; index = next_++) {
            if (settings_.only < 0 || settings_.only == index) {
                storm_once(index);
            }
        }
    }

    // A signal that comes before the handler is there meets the default action, and a run can have
    // come to its own end: another is drawn.
    void storm_once(int index) {
        std::seed_seq seeds{settings_.seed, static_cast<unsigned>(index)};
        std::mt19937 random(seeds);
        Attempt attempt = interrupt_once(index, random);
        while (!note(index, attempt)) {
            attempt = interrupt_once(index, random);
        }
        if (settings_.only == index) {
            std::printf("%s\n%s", attempt.description().c_str(), attempt.run.out.c_str());
        }
    }

    /// False when the interrupt does not count.
    bool note(int index, const Attempt& attempt) {
        const std::lock_guard lock(mutex_);
        switch (attempt.judgement.verdict) {
        case Verdict::good:
            ++runs_[attempt.life->name];
            reactions_.push_back({attempt.judgement.reaction_ms,
                                  "run " + std::to_string(index) + ", " + attempt.description()});
            return true;
        case Verdict::before_the_handler:
            ++early_;
            return false;
        case Verdict::after_the_end:
            ++late_;
            return false;
        case Verdict::bad:
            ++runs_[attempt.life->name];
            ++bad_;
            std::printf("BAD, repeat with --seed %u --only %d: %s: %s\n", settings_.seed, index,
                        attempt.description().c_str(), attempt.judgement.problem.c_str());
            std::fflush(stdout);
            return true;
        }
        return true;
    }

    int summarise() {
        for (const auto& [name, runs] : runs_) {
            std::printf("%5d  %s\n", runs, name.c_str());
        }
        std::sort(reactions_.begin(), reactions_.end(),
                  [](const Reaction& a, const Reaction& b) { return a.ms < b.ms; });
        const std::size_t count = reactions_.size();
        const Reaction none{};
        const Reaction& median = count == 0 ? none : reactions_[count / 2];
        const Reaction& late = count == 0 ? none : reactions_[count * 99 / 100];
        const Reaction& slowest = count == 0 ? none : reactions_.back();
        std::printf("seed %u: %zu interrupted runs ended well, %d did not; end after %.1f ms at "
                    "the median, %.1f ms at the 99th percentile, %.1f ms at most (%s); %d more met "
                    "no handler yet, %d had ended before\n",
                    settings_.seed, count, bad_, median.ms, late.ms, slowest.ms,
                    slowest.description.c_str(), early_, late_);
        return bad_ == 0 && count > 0 ? EXIT_SUCCESS : EXIT_FAILURE;
    }

    Settings settings_;
    std::atomic<int> next_ = 0;
    std::mutex mutex_;
    std::map<std::string, int> runs_;
    std::vector<Reaction> reactions_;
    int early_ = 0;
    int late_ = 0;
    int bad_ = 0;
};

bool parse(int argc, char* argv[], Settings& settings) {
    constexpr std::array<option, 5> options{{{"count", required_argument, nullptr, 'c'},
                                             {"seed", required_argument, nullptr, 's'},
                                             {"jobs", required_argument, nullptr, 'j'},
                                             {"only", required_argument, nullptr, 'o'},
                                             {nullptr, 0, nullptr, 0}}};
    for (int letter = getopt_long(argc, argv, "", options.data(), nullptr); letter != -1;
         letter = getopt_long(argc, argv, "", options.data(), nullptr)) {
        const int value = letter == '?' ? 0 : std::atoi(optarg);
        switch (letter) {
        case 'c':
            settings.count = value;
            break;
        case 's':
            settings.seed = static_cast<unsigned>(value);
            break;
        case 'j':
            settings.jobs = value;
            break;
        case 'o':
            settings.only = value;
            settings.count = std::max(settings.count, value + 1);
            break;
        default:
            return false;
        }
    }
    return settings.count > 0 && settings.jobs > 0;
}

} // namespace
} // namespace bench_test

int main(int argc, char* argv[]) {
    bench_test::Settings settings;
    if (!bench_test::parse(argc, argv, settings)) {
        std::fprintf(stderr,
                     "usage: interrupt_storm [--count N] [--seed S] [--jobs J] [--only I]\n");
        return EXIT_FAILURE;
    }
    return bench_test::Storm(settings).run();
}

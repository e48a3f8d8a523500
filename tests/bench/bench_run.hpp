// SPDX-License-Identifier: Apache-2.0
// Runs the unchanged tool on the rehearsal bench and hands back all that it left.
//
//     const BenchRun run = Bench("scan-refused").args({"-w", "-m", "1"}).run();
//     EXPECT_EQ(run.result_file(), "Test case 1 passed \n...");
#pragma once

#include <sys/types.h>

#include <chrono>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace bench_test {

/// Scenario lines for runs whose clock is faster than a real DHCP exchange: programs that succeed
/// at once stand in its place.
inline constexpr const char* quick_address = "program udhcpc runs \"exit 0\"\n"
                                             "program killall runs \"exit 0\"";

class Console;

struct BenchRun {
    std::string out;
    std::string err;
    /// Exit status of the tool; 128 + n when signal n ended it, 125 when the bench failed.
    int status = -1;
    bool timed_out = false;
    double wall_ms = 0;
    /// User and system time of the tool and of the children that it waited for.
    double processor_ms = 0;
    long max_rss_kb = 0;
    /// Files that the run left, by path: "root/WIFIResult", "tmp/output", "supplicant.log".
    std::map<std::string, std::string> files;

    /// The result file; nothing when there is none.
    std::optional<std::string> result_file() const;

    /// Commands that the supplicant received, without "ATTACH" and "DETACH".
    std::vector<std::string> commands() const;

    /// The same, each with the microseconds since the supplicant's start.
    std::vector<std::pair<long long, std::string>> timed_commands() const;

    /// Milliseconds from the start to the signals that went by time or by a child.
    std::vector<double> signals_sent_ms() const;

    /// Client sockets that were left in /tmp.
    std::vector<std::string> sockets() const;
};

/// A run that goes on while a test does something.
class StartedRun {
public:
    StartedRun(const StartedRun&) = delete;
    StartedRun& operator=(const StartedRun&) = delete;
    ~StartedRun();

    /// Reads standard output until it holds `text`. False when that takes too long.
    bool shows(std::string_view text, std::chrono::milliseconds limit = std::chrono::seconds(30));

    /// What was read so far.
    const std::string& out() const {
        return run_.out;
    }

    /// Waits for standard output and hands over what came; it does not come again in `finish`.
    /// Empty at its end.
    std::string next_out();

    /// The process in whose world the tool runs.
    pid_t launcher() const;

    /// Waits for the end without reading standard output any further. False when that takes
    /// longer.
    bool ends_unread(std::chrono::milliseconds limit);

    /// Writes to the tool's standard input, and closes it.
    void type(std::string_view text);
    void close_input();

    /// Ends the run by force: it counts as one that did not end.
    BenchRun abandon();

    /// Reads both streams to their ends, and hands back all that the run left.
    BenchRun finish();

private:
    friend class Bench;
    struct Ends;

    StartedRun();

    std::unique_ptr<Ends> ends_;
    BenchRun run_;
    std::chrono::steady_clock::time_point limit_;
};

class Bench {
public:
    /// `scenario` names a file of bench/scenarios without its ending; empty for a device that
    /// passes.
    explicit Bench(std::string scenario = "");

    /// Adds scenario lines to the named scenario.
    Bench& line(std::string_view text);
    Bench& set(const std::string& key, const std::string& value);
    Bench& args(std::vector<std::string> arguments);
    /// Further options of the launcher.
    Bench& option(const std::string& name, const std::string& value);
    Bench& signal(const std::string& what_and_when);
    Bench& faster(int speed) {
        return option("--faster", std::to_string(speed));
    }
    /// What the tool reads from standard input.
    Bench& input(std::string text);
    /// Standard output and standard error as one text, in order, in `out`.
    Bench& streams_together();
    /// Standard output goes to this file of the machine.
    Bench& out_file(std::string path);
    /// Both streams go to this console, which must outlive the start; on a terminal the run is its
    /// foreground job, and standard input comes from it too.
    Bench& console(const Console& console);
    /// The tool begins with so many more descriptors open.
    Bench& open_descriptors(int count);
    /// Ends the run when it takes longer; 100 s unless set.
    Bench& at_most(std::chrono::seconds limit);

    BenchRun run();

    /// Starts the run; its standard input stays open.
    std::unique_ptr<StartedRun> start();

private:
    std::vector<std::string> command_line(const std::string& folder) const;

    std::string scenario_;
    std::string lines_;
    std::vector<std::string> options_;
    std::vector<std::string> arguments_;
    std::string input_;
    std::string out_file_;
    const Console* console_ = nullptr;
    int open_descriptors_ = 0;
    bool signalled_ = false;
    bool together_ = false;
    std::chrono::seconds limit_{100};
};

/// Runs the legacy WLAN test.
BenchRun run_wlan(Bench bench, int iterations = 1);

/// Runs one iteration of a mode on a clock that is 20 times faster. A real DHCP exchange cannot
/// follow it, so one is played.
BenchRun run_quickly(Bench bench, const std::string& mode);

} // namespace bench_test

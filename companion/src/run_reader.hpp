// Reads a console and builds the model of its runs: splits it into iterations and phases and
// counts failures as the tool records them.
#pragma once

#include "figures.hpp"
#include "line_splitter.hpp"
#include "recent_lines.hpp"
#include "recogniser.hpp"
#include "run_model.hpp"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace wivex::report {

struct ReaderOptions {
    /// The mode that runs; `Mode::unknown`: to be seen from the console.
    Mode mode = Mode::unknown;
    /// Whether the moment at which bytes are fed is the moment at which the tool wrote them.
    bool arrival_times = false;
};

/// What goes on right now, for a live view.
struct Now {
    bool running = false;
    bool in_iteration = false;
    std::uint32_t iteration = 0;
    Phase phase = Phase::none;
    /// Seconds on the clock of `feed`, since when the phase is under way.
    double phase_since = 0;
    double iteration_since = 0;
    double run_since = 0;
    double megabits_per_second = -1;
};

class RunReader {
public:
    explicit RunReader(ReaderOptions options = {});

    /// Takes the next bytes of the console, read at `now` (seconds of any steady clock).
    void feed(std::string_view bytes, double now = 0);

    /// The console has ended: closes what is open.
    void finish(double now = 0);

    const Log& log() const {
        return log_;
    }
    /// The run that is being read, or the last one; null before the first.
    const Run* run() const {
        return log_.runs.empty() ? nullptr : &log_.runs.back();
    }
    Now now() const;

private:
    /// A failure of a mode that the tool has told and not yet recorded.
    struct Pending {
        Cause cause = Cause::none;
        std::size_t detail = 0;
        int connections_closed = 0;
        bool concluded = false;
    };

    /// What is known of the iteration that is being read.
    struct Current {
        Iteration record;
        bool open = false;
        /// Something after the module check was seen.
        bool moved_on = false;
        bool check_failed = false;
        bool mode_failed = false;
        bool mode_passed = false;
        bool mode_seen = false;
        bool session_trouble = false;
        bool address_taken = false;
        bool owner = false;
        bool role_known = false;
        bool traffic_seen = false;
        int connections_closed = 0;
        double began = 0;
        float sum_throughput = -1;
        Spread throughput;
        std::optional<float> total_throughput;
        std::optional<Pending> pending;
    };

    void take_line(std::string_view line);
    std::string_view without_stamp(std::string_view line);
    bool take_listed_ssid(std::string_view line);
    void take_finding(const Finding& finding);
    void take_special(const Finding& finding);
    void take_ending(const Finding& finding);
    bool take_figures(std::string_view line);

    void begin_run();
    void end_run(RunEnd end);
    void begin_iteration();
    void end_iteration(bool complete);
    void ensure_iteration(const TextRow& row);
    void learn_mode(Mode mode);

    void enter(Phase phase);
    void close_phase(Verdict verdict);
    void judge(Phase phase, Verdict verdict);
    void pass_time_to(Phase phase);

    void fail(Cause cause, bool concluded = false);
    void warn(Cause cause);
    void commit_pending();
    void count_failure(Cause cause);
    std::size_t describe(Cause cause, bool warning);
    void conclude_missing_failure();
    Cause missing_failure() const;
    void set_outcome(bool complete);
    void set_throughput();
    void see_access_point(std::string_view bssid, std::string_view ssid, int frequency,
                          std::optional<float> signal);
    void doubt_arrival_times();
    bool times_known() const;

    ReaderOptions options_;
    LineSplitter splitter_;
    Recogniser recogniser_;
    RecentLines recent_;
    Log log_;
    Run* run_ = nullptr;
    Current current_;
    Phase phase_ = Phase::none;
    bool run_over_ = false;

    double now_ = 0;
    double mark_ = 0;
    double run_began_ = 0;
    double megabits_ = -1;
    StampFormat stamps_ = StampFormat::none;
    double stamp_day_ = 0;
    /// Of the line that is being read.
    std::string_view stamp_text_;

    long ssids_to_come_ = 0;
    long ssids_known_ = 0;
    long ssids_listed_ = 0;
    std::string prefix_;
    bool in_matches_ = false;
    /// Index of the failure whose excerpt still takes the lines that follow.
    std::size_t excerpt_ = 0;
    int excerpt_lines_ = 0;
};

} // namespace wivex::report

#include "run_reader.hpp"

#include "printable.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <ctime>

namespace wivex::report {

namespace {

constexpr std::string_view tool_prefix = "[WIFI]";
constexpr std::size_t lines_before_failure = 6;
constexpr int lines_after_failure = 1;

// The tool pauses two seconds after every iteration: a console that goes faster is a saved one.
constexpr double shortest_pause = 1.0;

std::string local_time(std::time_t seconds) {
    std::tm parts{};
    if (localtime_r(&seconds, &parts) == nullptr) {
        return {};
    }
    std::array<char, 32> text{};
    const std::size_t length = std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S", &parts);
    return {text.data(), length};
}

// A stamp as date and time; one without a date tells no beginning.
std::string began_text(StampFormat format, std::string_view stamp) {
    if (format == StampFormat::epoch) {
        return local_time(read_number(stamp).value_or(0));
    }
    if (format != StampFormat::iso) {
        return {};
    }
    std::string text(stamp.substr(stamp.starts_with('[') ? 1 : 0, 19));
    text.at(10) = ' ';
    return text;
}

// Cheap, because it is asked for every line.
bool may_be_stamped(std::string_view line) {
    constexpr std::size_t shortest_stamp = 8;
    if (line.size() < shortest_stamp) {
        return false;
    }
    const auto is_digit = [](char c) { return c >= '0' && c <= '9'; };
    const bool month = line[0] >= 'A' && line[0] <= 'S' && line[3] == ' ';
    return is_digit(line[0]) || (line[0] == '[' && is_digit(line[1])) || month;
}

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && text.back() == ' ') {
        text.remove_suffix(1);
    }
    return text;
}

bool ends_with_word(std::string_view text, std::string_view word) {
    return text.ends_with(word);
}

// The 17 characters of a MAC text at the start of `text`.
std::string mac_text(std::string_view text) {
    return printable(text.substr(0, std::min<std::size_t>(text.size(), 17)), 20);
}

// Told on standard error: shows that the console carries it.
bool is_standard_error(const TextRow& row) {
    switch (row.cause) {
    case Cause::session_not_open:
    case Cause::target_missing:
    case Cause::iperf_client:
    case Cause::network_not_disabled:
    case Cause::address_not_set:
    case Cause::dhcp_server:
    case Cause::no_group_started:
    case Cause::group_not_added:
    case Cause::iperf_server:
        return true;
    default:
        return row.sign == Sign::iperf_done || row.sign == Sign::unknown_key ||
               row.sign == Sign::result_unwritable;
    }
}

} // namespace

RunReader::RunReader(ReaderOptions options) : options_(options) {}

void RunReader::feed(std::string_view bytes, double now) {
    log_.bytes += bytes.size();
    if (stamps_ == StampFormat::none) {
        now_ = now;
    }
    splitter_.feed(bytes, [this](std::string_view line) { take_line(line); });
}

void RunReader::finish(double now) {
    if (stamps_ == StampFormat::none) {
        now_ = now;
    }
    splitter_.finish([this](std::string_view line) { take_line(line); });
    if (run_ != nullptr) {
        end_run(run_->end);
        run_ = nullptr;
    }
}

Now RunReader::now() const {
    Now state;
    state.running = run_ != nullptr && !run_over_;
    state.in_iteration = current_.open;
    state.run_since = run_began_;
    if (run_ == nullptr || !current_.open) {
        return state;
    }
    state.iteration = current_.record.number;
    state.phase = phase_;
    state.phase_since = mark_;
    state.iteration_since = current_.began;
    state.megabits_per_second = megabits_;
    if (phase_ == Phase::none && !current_.mode_failed && !current_.mode_passed) {
        Phase last = Phase::module;
        for (const Phase phase : all_phases()) {
            const PhaseRecord& record = current_.record.phase(phase);
            last = record.verdict != Verdict::none ? phase : last;
        }
        state.phase = phase_after(run_->mode, last);
    }
    return state;
}

// ---- Lines

std::string_view RunReader::without_stamp(std::string_view line) {
    if (stamps_ == StampFormat::none && !may_be_stamped(line)) {
        return line;
    }
    const auto stamp = read_stamp(line, stamps_);
    if (!stamp) {
        return line;
    }
    stamp_text_ = stamp->text;
    if (stamps_ == StampFormat::none) {
        // Only a text of the tool behind it makes a stamp of it.
        if (!recogniser_.begins_with_text(stamp->rest)) {
            return line;
        }
        stamps_ = stamp->format;
        now_ = stamp->seconds;
        return stamp->rest;
    }
    double seconds = stamp->seconds + stamp_day_;
    constexpr double day = 86400;
    if (stamps_ == StampFormat::clock && seconds < now_ - day / 2) {
        stamp_day_ += day;
        seconds += day;
    }
    now_ = seconds;
    return stamp->rest;
}

void RunReader::take_line(std::string_view line) {
    ++log_.lines;
    stamp_text_ = {};
    line = without_stamp(line);
    recent_.add(line);
    if (excerpt_lines_ > 0 && run_ != nullptr && excerpt_ < run_->failures.size()) {
        --excerpt_lines_;
        run_->failures[excerpt_].lines.push_back(printable(line, RecentLines::width));
    }
    if (take_listed_ssid(line)) {
        return;
    }
    if (line.empty()) {
        return;
    }
    const std::span<const Finding> findings = recogniser_.read(line);
    for (const Finding& finding : findings) {
        take_finding(finding);
    }
    if (findings.empty() && !take_figures(line)) {
        ++log_.unknown_lines;
    }
}

// The names of access points are anybody's: "SCAN FAIL" may be one. The tool says how many follow,
// and those with the prefix begin with it.
bool RunReader::take_listed_ssid(std::string_view line) {
    if ((ssids_to_come_ == 0 && !in_matches_) || !line.starts_with(tool_prefix)) {
        return false;
    }
    const std::string_view ssid = line.substr(tool_prefix.size());
    if (ssid.starts_with(' ')) {
        // A name never begins with a blank (it is printed as \x20): this is the handler speaking.
        ssids_to_come_ = 0;
        in_matches_ = false;
        return false;
    }
    if (ssids_to_come_ > 0) {
        --ssids_to_come_;
        ++ssids_listed_;
        // The tool lists the access points of earlier scans again: only the last ones are new.
        if (ssids_listed_ > ssids_known_) {
            see_access_point({}, ssid, 0, {});
        }
        if (ssids_to_come_ == 0) {
            ssids_known_ = ssids_listed_;
        }
        return true;
    }
    if (ssid.starts_with(prefix_) && !ssid.starts_with("APs found with matching prefix are ") &&
        !ssid.starts_with("More than 50 AP coming with matching prefix")) {
        return true;
    }
    in_matches_ = false;
    return false;
}

bool RunReader::take_figures(std::string_view line) {
    if (const auto figure = read_traffic(line)) {
        if (run_ == nullptr || !current_.open) {
            return true;
        }
        if (phase_ != Phase::serve && run_->mode != Mode::go) {
            enter(Phase::traffic);
        }
        current_.traffic_seen = true;
        const auto rate = static_cast<float>(figure->megabits_per_second);
        megabits_ = rate;
        if (figure->is_sum && figure->is_total()) {
            current_.sum_throughput = rate;
        } else if (figure->is_total()) {
            current_.total_throughput = rate;
        } else if (!figure->is_sum) {
            current_.throughput.add(rate);
        }
        return true;
    }
    if (const auto found = read_access_point(line)) {
        see_access_point(found->bssid, found->ssid, found->frequency,
                         static_cast<float>(found->signal));
        return true;
    }
    return false;
}

void RunReader::see_access_point(std::string_view bssid, std::string_view ssid, int frequency,
                                 std::optional<float> signal) {
    if (run_ == nullptr) {
        return;
    }
    auto& list = run_->access_points;
    const std::string name = printable(ssid, 140);
    const auto found = std::ranges::find_if(list, [&](const AccessPoint& point) {
        return point.bssid == bssid && (point.ssid == name || !bssid.empty());
    });
    AccessPoint* point = found == list.end() ? nullptr : &*found;
    if (point == nullptr) {
        if (list.size() == most_access_points) {
            ++run_->unlisted_access_points;
            return;
        }
        point = &list.emplace_back();
        point->bssid = std::string(bssid);
    }
    point->ssid = name;
    point->frequency = frequency;
    ++point->times_seen;
    if (signal) {
        point->signal.add(*signal);
    }
}

// ---- Runs and iterations

void RunReader::begin_run() {
    if (run_ != nullptr) {
        end_run(run_->end == RunEnd::open ? RunEnd::broke_off : run_->end);
    }
    if (log_.runs.size() == most_runs) {
        log_.runs.pop_front();
        ++log_.dropped_runs;
    }
    run_ = &log_.runs.emplace_back();
    run_->mode = options_.mode;
    run_over_ = false;
    run_began_ = now_;
    mark_ = now_;
    megabits_ = -1;
    phase_ = Phase::none;
    current_ = {};
    ssids_known_ = 0;
    ssids_to_come_ = 0;
    in_matches_ = false;
    excerpt_lines_ = 0;
    if (stamps_ != StampFormat::none) {
        run_->times = TimeSource::stamps;
        run_->began = began_text(stamps_, stamp_text_);
    } else if (options_.arrival_times) {
        run_->times = TimeSource::arrival;
        run_->began = local_time(std::time(nullptr));
    }
}

bool RunReader::times_known() const {
    return run_ != nullptr && run_->times != TimeSource::none;
}

void RunReader::end_run(RunEnd end) {
    end_iteration(false);
    if (run_->mode == Mode::unknown && run_->failures_without_test_case() == 0 &&
        run_->count(Outcome::unfinished) < run_->started) {
        run_->mode = Mode::checks;
    }
    run_->end = end;
    if (times_known()) {
        run_->seconds = static_cast<float>(now_ - run_began_);
    }
}

// Iterations that follow each other faster than the tool's own pause come from a saved console:
// its times are those of the disk.
void RunReader::doubt_arrival_times() {
    if (run_->times != TimeSource::arrival || run_->started == 0 ||
        now_ - current_.began >= shortest_pause) {
        return;
    }
    run_->times = TimeSource::none;
    run_->began.clear();
    run_->phase_seconds = {};
    run_->iteration_seconds = {};
    run_->timeline.forget_times();
    for (Iteration& iteration : run_->iterations) {
        iteration.forget_times();
    }
    current_.record.forget_times();
}

void RunReader::begin_iteration() {
    if (run_ == nullptr) {
        begin_run();
    }
    doubt_arrival_times();
    end_iteration(true);
    current_ = {};
    current_.open = true;
    current_.record.number = run_->started;
    current_.began = now_;
    if (times_known()) {
        current_.record.start = static_cast<float>(now_ - run_began_);
    }
    ++run_->started;
    phase_ = Phase::none;
    mark_ = now_;
    megabits_ = -1;
    ssids_to_come_ = 0;
    in_matches_ = false;
}

void RunReader::set_throughput() {
    if (current_.sum_throughput >= 0) {
        current_.record.throughput = current_.sum_throughput;
    } else if (current_.total_throughput) {
        current_.record.throughput = *current_.total_throughput;
    } else if (current_.throughput.count > 0) {
        current_.record.throughput = static_cast<float>(current_.throughput.mean());
    }
    if (current_.record.throughput >= 0) {
        run_->throughput.add(current_.record.throughput);
    }
}

void RunReader::set_outcome(bool complete) {
    Iteration& record = current_.record;
    if (current_.check_failed) {
        record.outcome = Outcome::failed;
        return;
    }
    if (current_.mode_failed) {
        return;
    }
    const bool scripted = run_->mode == Mode::legacy || run_->mode == Mode::device ||
                          run_->mode == Mode::go || run_->mode == Mode::client;
    const bool done = !scripted || current_.mode_passed;
    // The scan and the legacy mode say that they have passed; an own group serves until it is
    // interrupted.
    const bool said =
        current_.mode_passed &&
        (run_->mode == Mode::scan || run_->mode == Mode::legacy || run_->mode == Mode::go);
    record.outcome = said || (complete && done) ? Outcome::passed : Outcome::unfinished;
}

void RunReader::end_iteration(bool complete) {
    if (!current_.open) {
        return;
    }
    if (complete) {
        conclude_missing_failure();
    }
    commit_pending();
    close_phase(complete && current_.mode_passed ? Verdict::passed : Verdict::unfinished);
    set_outcome(complete);
    set_throughput();
    Iteration& record = current_.record;
    if (times_known()) {
        record.seconds = static_cast<float>(mark_ - current_.began);
        run_->iteration_seconds.add(static_cast<float>(now_ - current_.began));
    }
    ++run_->outcomes.at(static_cast<std::size_t>(record.outcome));
    run_->warned += record.warned ? 1 : 0;
    for (std::size_t i = 0; i < phase_count; ++i) {
        const PhaseRecord& phase = record.phases[i];
        if (phase.verdict != Verdict::none) {
            ++run_->verdicts[i].at(static_cast<std::size_t>(phase.verdict));
        }
        if (phase.was_completed()) {
            run_->phase_seconds[i].add(phase.seconds);
        }
    }
    if (run_->iterations.size() < most_detailed_iterations) {
        run_->iterations.push_back(record);
    }
    run_->timeline.add(record);
    current_.open = false;
    phase_ = Phase::none;
}

void RunReader::learn_mode(Mode mode) {
    if (run_ != nullptr && mode != Mode::unknown && run_->mode == Mode::unknown) {
        run_->mode = mode;
    }
}

// ---- Phases

// The time since the last thing that happened belongs to `phase`.
void RunReader::pass_time_to(Phase phase) {
    PhaseRecord& record = current_.record.phases.at(index_of(phase));
    if (times_known()) {
        const auto passed = static_cast<float>(std::max(0.0, now_ - mark_));
        record.seconds = std::isnan(record.seconds) ? passed : record.seconds + passed;
    }
    mark_ = now_;
}

void RunReader::close_phase(Verdict verdict) {
    if (phase_ == Phase::none || !current_.open) {
        return;
    }
    pass_time_to(phase_);
    PhaseRecord& record = current_.record.phases.at(index_of(phase_));
    record.verdict = std::max(record.verdict, verdict);
    phase_ = Phase::none;
}

void RunReader::enter(Phase phase) {
    if (phase == Phase::none || phase == phase_ || !current_.open) {
        return;
    }
    close_phase(Verdict::passed);
    phase_ = phase;
    current_.moved_on = current_.moved_on || phase != Phase::module;
}

void RunReader::judge(Phase phase, Verdict verdict) {
    enter(phase);
    close_phase(verdict);
}

// ---- Failures

std::size_t RunReader::describe(Cause cause, bool warning) {
    CauseCount& count = run_->causes.at(index_of(cause));
    if (run_->failures.size() >= most_detailed_failures ||
        count.detailed >= most_detailed_failures_of_cause) {
        return most_detailed_failures;
    }
    ++count.detailed;
    Failure& failure = run_->failures.emplace_back();
    failure.cause = cause;
    failure.phase = row_of(cause).phase;
    failure.iteration = current_.record.number;
    failure.line = log_.lines;
    failure.warning = warning;
    const std::size_t shown = std::min(recent_.size(), lines_before_failure);
    for (std::size_t back = shown; back > 0; --back) {
        failure.lines.push_back(printable(recent_.before_last(back - 1), RecentLines::width));
    }
    failure.shown_at = failure.lines.empty() ? 0 : failure.lines.size() - 1;
    excerpt_ = run_->failures.size() - 1;
    excerpt_lines_ = lines_after_failure;
    return excerpt_;
}

void RunReader::count_failure(Cause cause) {
    CauseCount& count = run_->causes.at(index_of(cause));
    if (count.failures == 0) {
        count.first_iteration = current_.record.number;
    }
    count.last_iteration = current_.record.number;
    ++count.failures;
}

void RunReader::warn(Cause cause) {
    CauseCount& count = run_->causes.at(index_of(cause));
    if (count.warnings == 0 && count.failures == 0) {
        count.first_iteration = current_.record.number;
    }
    count.last_iteration = current_.record.number;
    ++count.warnings;
    current_.record.warned = true;
    describe(cause, true);
}

// A check is recorded as it is told. A mode returns first: its session is closed, which can be
// interrupted, and only then does the run loop record the code.
void RunReader::fail(Cause cause, bool concluded) {
    if (row_of(cause).test_case != 0) {
        current_.check_failed = true;
        describe(cause, false);
        count_failure(cause);
        return;
    }
    if (current_.mode_failed) {
        return;
    }
    current_.mode_failed = true;
    current_.mode_passed = false;
    Pending pending;
    pending.cause = cause;
    pending.detail = describe(cause, false);
    pending.concluded = concluded;
    if (concluded && pending.detail < run_->failures.size()) {
        run_->failures[pending.detail].concluded = true;
    }
    current_.pending = pending;
    // Without an open session nothing is waited for before the code is recorded.
    if (cause == Cause::session_not_open) {
        commit_pending();
    }
}

void RunReader::commit_pending() {
    if (!current_.pending) {
        return;
    }
    const Cause cause = current_.pending->cause;
    current_.pending.reset();
    count_failure(cause);
    const bool counted = records_of(cause, run_->mode) != 0 || run_->mode == Mode::unknown;
    current_.record.outcome = counted ? Outcome::failed : Outcome::uncounted;
}

// The failure that a mode must have told on a standard error that is not in this console: its
// session was closed, its iteration is over, and the line of a pass did not come.
Cause RunReader::missing_failure() const {
    if (current_.session_trouble) {
        return Cause::session_not_open;
    }
    const Iteration& record = current_.record;
    const auto reached = [&](Phase phase) {
        return phase_ == phase || record.phase(phase).verdict != Verdict::none;
    };
    switch (run_->mode) {
    case Mode::legacy:
        if (reached(Phase::disconnect)) {
            return Cause::network_not_disabled;
        }
        return reached(Phase::dhcp) ? Cause::iperf_client : Cause::none;
    case Mode::device:
        if (current_.role_known) {
            return current_.owner ? Cause::address_not_set : Cause::dhcp_client;
        }
        return reached(Phase::negotiate) ? Cause::no_group_started : Cause::none;
    case Mode::client:
        if (current_.address_taken) {
            return Cause::iperf_client;
        }
        return reached(Phase::dhcp) ? Cause::dhcp_client : Cause::none;
    case Mode::go:
        return reached(Phase::group) ? Cause::address_not_set : Cause::group_not_added;
    default:
        return Cause::none;
    }
}

void RunReader::conclude_missing_failure() {
    if (current_.mode_failed || current_.mode_passed || run_->has_standard_error ||
        (!current_.mode_seen && !current_.session_trouble)) {
        return;
    }
    const Cause cause = missing_failure();
    if (cause == Cause::none) {
        return;
    }
    judge(row_of(cause).phase, Verdict::failed);
    fail(cause, true);
}

// ---- Texts

// A console may begin in the middle of a run; what is only said inside an iteration opens one.
void RunReader::ensure_iteration(const TextRow& row) {
    if (current_.open || run_over_ || (row.phase == Phase::none && row.cause == Cause::none)) {
        return;
    }
    begin_iteration();
}

void RunReader::take_finding(const Finding& finding) {
    const TextRow& row = *finding.row;
    if (row.sign == Sign::run_begins) {
        begin_run();
        run_->device.build = printable(trimmed(finding.argument), 80);
        run_->device.build.insert(0, row.text.substr(tool_prefix.size()));
        return;
    }
    const bool begins_iteration = row.phase == Phase::module && !run_over_ &&
                                  (!current_.open || current_.moved_on ||
                                   current_.record.phase(Phase::module).verdict != Verdict::none);
    if (begins_iteration) {
        begin_iteration();
    } else {
        ensure_iteration(row);
    }
    if (run_ == nullptr) {
        begin_run();
    }
    learn_mode(row.mode);
    run_->has_standard_error = run_->has_standard_error || is_standard_error(row);
    if (row.mode != Mode::unknown) {
        current_.mode_seen = true;
    }
    switch (row.sign) {
    case Sign::known:
        return;
    case Sign::enter:
        if (current_.open) {
            enter(row.phase);
        }
        return;
    case Sign::pass:
        if (current_.open) {
            current_.address_taken = current_.address_taken || row.phase == Phase::dhcp;
            current_.mode_passed = current_.mode_passed || row.mode == Mode::scan;
            judge(row.phase, Verdict::passed);
        }
        return;
    case Sign::warn:
        if (current_.open) {
            current_.mode_passed = current_.mode_passed || row.cause == Cause::listing_empty;
            judge(row.phase, Verdict::warned);
            warn(row.cause);
        }
        return;
    case Sign::fail:
        if (!current_.open) {
            return;
        }
        if (row.cause == Cause::dhcp_client && run_->mode == Mode::legacy) {
            enter(row.phase);
            return;
        }
        judge(row.phase, Verdict::failed);
        fail(row.cause);
        return;
    default:
        take_special(finding);
    }
}

void RunReader::take_special(const Finding& finding) {
    const TextRow& row = *finding.row;
    const std::string_view argument = finding.argument;
    Device& device = run_->device;
    switch (row.sign) {
    case Sign::config_path:
        if (!ends_with_word(argument, " Failed")) {
            device.config_file = printable(argument);
        }
        return;
    case Sign::unknown_key:
        if (run_->unknown_keys.size() < 32) {
            run_->unknown_keys.push_back(printable(argument.substr(0, argument.find(" value = "))));
        }
        return;
    case Sign::chip_type:
        enter(Phase::module);
        device.chip_type = static_cast<int>(read_number(argument).value_or(0));
        return;
    case Sign::chip_ids: {
        enter(Phase::module);
        const std::size_t split = argument.find(" and product id ");
        if (split != std::string_view::npos) {
            device.vendor_id = printable(argument.substr(0, split), 40);
            device.product_id = printable(argument.substr(split + 16), 40);
        }
        return;
    }
    case Sign::session_trouble:
        enter(Phase::session);
        current_.session_trouble = true;
        return;
    case Sign::connection_closed:
        if (!argument.starts_with("0") || !current_.open) {
            return;
        }
        ++current_.connections_closed;
        if (phase_ == Phase::removal && current_.mode_passed) {
            close_phase(Verdict::passed);
        }
        if (current_.pending && ++current_.pending->connections_closed == 2) {
            commit_pending();
        }
        return;
    case Sign::peer_found:
        if (phase_ == Phase::find) {
            judge(Phase::find, Verdict::passed);
        }
        return;
    case Sign::own_address:
        device.address = printable(argument.substr(0, argument.find_first_of(" ,")), 40);
        return;
    case Sign::role_owner:
    case Sign::role_client:
        // Short words that anybody may print: only at the point where the role is awaited.
        if (run_->mode == Mode::device && current_.open && phase_ == Phase::group) {
            current_.role_known = true;
            current_.owner = row.sign == Sign::role_owner;
            if (!current_.owner) {
                judge(Phase::group, Verdict::passed);
            }
        }
        return;
    case Sign::group_removed:
        if (!current_.open) {
            return;
        }
        if (current_.owner) {
            current_.mode_passed = !current_.mode_failed;
            judge(Phase::group, Verdict::passed);
            enter(Phase::removal);
        } else if (current_.address_taken && !current_.mode_failed) {
            enter(Phase::removal);
        } else if (!current_.mode_failed && run_->mode != Mode::go) {
            enter(Phase::session);
        }
        return;
    case Sign::mode_passed:
        if (!current_.open) {
            return;
        }
        current_.mode_passed = !current_.mode_failed;
        if (row.phase == Phase::disconnect) {
            judge(row.phase, Verdict::passed);
        } else {
            enter(row.phase);
        }
        return;
    case Sign::group_started:
        enter(row.phase);
        current_.mode_passed = current_.open && !current_.mode_failed;
        return;
    case Sign::client_connected:
        enter(row.phase);
        ++run_->clients_served;
        return;
    case Sign::iperf_done:
        if (current_.open) {
            if (current_.traffic_seen) {
                judge(Phase::traffic, Verdict::passed);
            } else {
                judge(Phase::traffic, Verdict::warned);
                warn(Cause::no_traffic_figure);
            }
        }
        return;
    case Sign::mac_kernel:
        enter(Phase::mac);
        device.mac_kernel = mac_text(argument);
        return;
    case Sign::mac_chip:
        enter(Phase::mac);
        device.mac_chip = mac_text(argument);
        return;
    case Sign::mac_pair: {
        enter(Phase::mac);
        device.mac_kernel = mac_text(argument.substr(0, argument.find(']')));
        const std::size_t chip = argument.find("curr_mac [");
        if (chip != std::string_view::npos) {
            const std::string_view rest = argument.substr(chip + 10);
            device.mac_chip = mac_text(rest.substr(0, rest.find(']')));
        }
        return;
    }
    case Sign::access_point_count:
        enter(Phase::scan);
        ssids_to_come_ = std::clamp(read_number(argument).value_or(0), 0L, 300L);
        ssids_listed_ = 0;
        return;
    case Sign::prefix:
        enter(Phase::scan);
        prefix_ = argument;
        in_matches_ = !prefix_.empty();
        return;
    case Sign::match_count:
        enter(Phase::scan);
        return;
    default:
        take_ending(finding);
    }
}

void RunReader::take_ending(const Finding& finding) {
    switch (finding.row->sign) {
    case Sign::not_started:
        run_->end = RunEnd::not_started;
        return;
    case Sign::softap_end:
        end_iteration(true);
        run_->end = RunEnd::softap;
        run_over_ = true;
        return;
    case Sign::interrupted:
        // A mode that had closed its session had returned: its code was recorded.
        if (current_.open && current_.pending) {
            const std::size_t detail = current_.pending->detail;
            ++run_->causes.at(index_of(current_.pending->cause)).unrecorded;
            if (detail < run_->failures.size()) {
                run_->failures[detail].unrecorded = true;
            }
            current_.pending.reset();
        } else if (current_.open && current_.connections_closed >= 2) {
            conclude_missing_failure();
        }
        end_iteration(current_.open && current_.connections_closed >= 2 && current_.mode_passed);
        run_->end = RunEnd::interrupted;
        run_over_ = true;
        return;
    case Sign::killed:
        end_iteration(false);
        run_->end = RunEnd::killed;
        run_over_ = true;
        return;
    case Sign::result_path:
    case Sign::result_unwritable:
    case Sign::result_written:
    case Sign::run_over:
        if (run_->end == RunEnd::open) {
            end_iteration(true);
            run_->end = RunEnd::finished;
            run_over_ = true;
        }
        break;
    default:
        return;
    }
    std::string_view path = finding.argument;
    if (finding.row->sign == Sign::result_written) {
        run_->result_written = true;
        if (path.ends_with(" Updated")) {
            path.remove_suffix(8);
        }
    }
    if (finding.row->sign != Sign::run_over && !path.empty()) {
        run_->result_file = printable(path);
    }
}

} // namespace wivex::report

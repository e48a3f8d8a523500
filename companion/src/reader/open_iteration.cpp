// SPDX-License-Identifier: Apache-2.0
#include "reader/open_iteration.hpp"

#include <algorithm>
#include <cmath>

namespace wivex::report {

void OpenIteration::begin(std::uint32_t number, Moment now, double run_began) {
    *this = {};
    open = true;
    record.number = number;
    began = now.seconds;
    mark = now.seconds;
    if (now.known) {
        record.start = static_cast<float>(now.seconds - run_began);
    }
}

// The time since the last thing that happened belongs to the phase.
void OpenIteration::pass_time_to(Phase to, Moment now) {
    PhaseRecord& times = record.phases.at(index_of(to));
    bool& untimed = untimed_phases.at(index_of(to));
    untimed = untimed || std::isnan(mark);
    if (untimed) {
        times.seconds = unknown_time;
    } else if (now.known) {
        const auto passed = static_cast<float>(std::max(0.0, now.seconds - mark));
        times.seconds = std::isnan(times.seconds) ? passed : times.seconds + passed;
    }
    mark = now.seconds;
}

void OpenIteration::lose_time() {
    mark = std::nan("");
    began = std::nan("");
}

void OpenIteration::close_phase(Verdict verdict, Moment now) {
    if (phase == Phase::none || !open) {
        return;
    }
    pass_time_to(phase, now);
    PhaseRecord& closed = record.phases.at(index_of(phase));
    closed.verdict = std::max(closed.verdict, verdict);
    phase = Phase::none;
}

void OpenIteration::enter(Phase next, Moment now) {
    if (next == Phase::none || next == phase || !open) {
        return;
    }
    // Only its own line passes a check; a step of a mode has passed when the next one begins.
    const bool is_check = phase <= Phase::loopback;
    close_phase(is_check ? Verdict::unfinished : Verdict::passed, now);
    phase = next;
    moved_on = moved_on || next != Phase::module;
}

void OpenIteration::judge(Phase judged, Verdict verdict, Moment now) {
    enter(judged, now);
    close_phase(verdict, now);
    if (open && judged != Phase::none) {
        judged_phases.at(index_of(judged)) = true;
    }
}

void OpenIteration::take_rate(float megabits_per_second, bool of_all_streams, bool of_all_time) {
    traffic_seen = true;
    rate = megabits_per_second;
    if (of_all_streams && of_all_time) {
        sum_throughput = megabits_per_second;
    } else if (of_all_time) {
        total_throughput = megabits_per_second;
    } else if (!of_all_streams) {
        throughput.add(megabits_per_second);
    }
}

void OpenIteration::set_throughput() {
    if (sum_throughput >= 0) {
        record.throughput = sum_throughput;
    } else if (total_throughput) {
        record.throughput = *total_throughput;
    } else if (throughput.count > 0) {
        record.throughput = static_cast<float>(throughput.mean());
    }
}

bool OpenIteration::is_pass_shown(PassShown by, bool complete) const {
    switch (by) {
    case PassShown::by_mode:
        return mode_passed;
    case PassShown::by_mode_and_end:
        return mode_passed && complete;
    case PassShown::until_interrupted:
        return mode_passed && !complete;
    default:
        return complete;
    }
}

Outcome OpenIteration::outcome(Mode mode, bool complete) const {
    if (check_failed) {
        return Outcome::failed;
    }
    if (mode_failed) {
        return record.outcome;
    }
    const bool passed = is_pass_shown(row_of(mode).pass_shown, complete);
    const auto left_open = [&](Phase check) {
        return record.phase(check).verdict == Verdict::unfinished;
    };
    const bool checked = was_judged(Phase::module) && was_judged(Phase::driver) &&
                         !left_open(Phase::mac) && !left_open(Phase::loopback);
    return passed && checked ? Outcome::passed : Outcome::unfinished;
}

Cause OpenIteration::missing_failure(Mode mode) const {
    if (session_trouble) {
        return Cause::session_not_open;
    }
    const auto reached = [&](Phase which) {
        return phase == which || record.phase(which).verdict != Verdict::none;
    };
    switch (mode) {
    case Mode::legacy:
        if (reached(Phase::disconnect)) {
            return Cause::network_not_disabled;
        }
        return reached(Phase::dhcp) ? Cause::iperf_client : Cause::none;
    case Mode::device:
        if (role_known) {
            return owner ? Cause::address_not_set : Cause::dhcp_client;
        }
        return reached(Phase::negotiate) ? Cause::no_group_started : Cause::none;
    case Mode::client:
        if (address_taken) {
            return Cause::iperf_client;
        }
        return reached(Phase::dhcp) ? Cause::dhcp_client : Cause::none;
    case Mode::go:
        return reached(Phase::group) ? Cause::address_not_set : Cause::group_not_added;
    default:
        return Cause::none;
    }
}

} // namespace wivex::report

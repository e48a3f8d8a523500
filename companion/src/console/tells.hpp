// SPDX-License-Identifier: Apache-2.0
// What the rows of the console's texts are made of: each function reads what a text tells, and
// knows how the tool writes its ids, addresses and paths.
#pragma once

#include "console/console_texts.hpp"

namespace wivex::report::tells {

/// A finding without a value of its own.
template <typename Group, typename What>
Told just(const Match& /*match*/) {
    return Group(What{});
}

/// A step of an iteration.
template <Verdict verdict>
Told step(const Match& /*match*/) {
    return CourseEvent(Step{verdict});
}

constexpr auto enter = step<Verdict::none>;
constexpr auto pass = step<Verdict::passed>;
constexpr auto warn = step<Verdict::warned>;
constexpr auto fail = step<Verdict::failed>;

Told run_begins(const Match& match);
Told starting(const Match& match);

constexpr auto single_iteration = just<Fact, SingleIteration>;
Told config_file(const Match& match);
Told unknown_key(const Match& match);
Told chip_type(const Match& match);
Told chip_ids(const Match& match);
Told kernel_mac(const Match& match);
Told chip_mac(const Match& match);
Told mac_pair(const Match& match);
Told own_address(const Match& match);

constexpr auto module_hint = just<CourseEvent, ModuleHint>;
Told loopback_status(const Match& match);
constexpr auto session_trouble = just<CourseEvent, SessionTrouble>;
Told connection_closed(const Match& match);
constexpr auto peer_found = just<CourseEvent, PeerFound>;
Told role_owner(const Match& match);
Told role_client(const Match& match);
constexpr auto group_removed = just<CourseEvent, GroupRemoved>;
constexpr auto group_started = just<CourseEvent, GroupStarted>;
constexpr auto client_connected = just<CourseEvent, ClientConnected>;
constexpr auto mode_passed = just<CourseEvent, ModePassed>;
constexpr auto iperf_done = just<CourseEvent, IperfDone>;
Told names_follow(const Match& match);
Told matches_follow(const Match& match);
Told network_named(const Match& match);

constexpr auto not_started = just<Ending, NotStarted>;
Told softap_end(const Match& match);
constexpr auto interrupted = just<Ending, Interrupted>;
constexpr auto after_interrupt = just<Ending, AfterInterrupt>;
constexpr auto killed = just<Ending, Killed>;
Told results_lost(const Match& match);
Told result_path(const Match& match);
Told result_unwritable(const Match& match);
Told result_written(const Match& match);
constexpr auto run_over = just<Ending, RunOver>;
constexpr auto cleaned_up = just<Ending, CleanedUp>;
constexpr auto done = just<Ending, Done>;

} // namespace wivex::report::tells

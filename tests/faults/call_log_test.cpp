// SPDX-License-Identifier: Apache-2.0
// What is learned of a run's system calls.

#include "call_log.hpp"
#include "error_numbers.hpp"
#include "fault_plan.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace faults {
namespace {

using namespace testing;

const std::string log_of_a_run =
    "execve(\"/bench/wivex\", [\"/bench/wivex\", \"-w\"], 0x7ffe /* 9 vars */) = 0\n"
    "openat(AT_FDCWD, \"/etc/ld.so.cache\", O_RDONLY|O_CLOEXEC) = 3\n"
    " > /bench/lib/ld.so(_dl_catch+0x1) [0x1]\n"
    "write(1, \"\\n[WIFI]WIVEX2_0_160421_INCREASE_\"..., 49) = 49\n"
    " > /bench/lib/libc.so.6(__write+0x10) [0xf8350]\n"
    " > /bench/wivex(wivex::flush_out()+0x23) [0x11c80]\n"
    "openat(AT_FDCWD, \"/tmp/output\", O_WRONLY|O_CREAT|O_TRUNC, 0666) = 4\n"
    " > /bench/lib/libc.so.6(open64+0x10) [0x2]\n"
    " > /bench/wivex(wivex::open_listing()+0x23) [0x3]\n"
    " > /bench/wivex(main+0x24) [0x498b]\n"
    "--- SIGCHLD {si_signo=SIGCHLD, si_code=CLD_EXITED, si_pid=8} ---\n"
    "openat(AT_FDCWD, \"/bench/log/air.log\", O_WRONLY|O_CREAT|O_APPEND, 0666) = 5\n"
    " > /bench/lib/libc.so.6(open64+0x10) [0x2]\n"
    " > /bench/preload-0.so(bench::(anonymous namespace)::log(nlmsghdr const&)+0x1) [0x4]\n"
    " > /bench/preload-0.so(sendmsg+0x42) [0x5]\n"
    " > /bench/wivex(wivex::send_request()+0x23) [0x3]\n"
    "sendmsg(4, {msg_name=NULL}, 0) = 32\n"
    " > /bench/lib/libc.so.6(sendmsg+0x10) [0x2]\n"
    " > /bench/preload-0.so(sendmsg+0x42) [0x5]\n"
    " > /bench/wivex(wivex::send_request()+0x23) [0x3]\n"
    "+++ exited with 0 +++\n";

std::vector<std::string> names_of(const std::vector<Call>& calls) {
    std::vector<std::string> names;
    names.reserve(calls.size());
    for (const Call& call : calls) {
        names.push_back(call.name + " " + std::to_string(call.nth) + " in " + call.caller);
    }
    return names;
}

TEST(CallLog, counts_the_calls_of_a_name_from_the_start) {
    const auto calls = read_call_log(log_of_a_run);
    ASSERT_EQ(calls.size(), 6U);
    EXPECT_EQ(calls[4].name, "openat");
    EXPECT_EQ(calls[4].nth, 3);
    EXPECT_EQ(calls[4].arguments,
              "AT_FDCWD, \"/bench/log/air.log\", O_WRONLY|O_CREAT|O_APPEND, 0666");
}

TEST(CallLog, leaves_out_what_comes_before_the_banner_and_what_the_simulation_does) {
    EXPECT_THAT(
        names_of(calls_after_the_banner(read_call_log(log_of_a_run))),
        ElementsAre("openat 2 in wivex::open_listing()", "sendmsg 1 in wivex::send_request()"));
}

TEST(CallLog, without_a_banner_holds_no_calls_of_the_tool) {
    EXPECT_THAT(calls_after_the_banner(read_call_log("close(3) = 0\n")), IsEmpty());
}

TEST(CallLog, knows_the_call_that_failed) {
    const auto failed = call_that_failed("close(3</tmp/a>) = 0\n"
                                         "close(4</tmp/b>) = -1 EIO (Input/output error) "
                                         "(INJECTED)\n");
    ASSERT_TRUE(failed);
    EXPECT_EQ(failed->arguments, "4</tmp/b>");
    EXPECT_FALSE(call_that_failed("close(4</tmp/b>) = -1 EIO (Input/output error)\n"));
}

TEST(Failures, of_a_call_are_those_that_it_can_give) {
    EXPECT_THAT(failures_of({"openat", 1, "AT_FDCWD, \"x\", O_WRONLY|O_CREAT", "", true}),
                Contains("error=ENOSPC"));
    EXPECT_THAT(failures_of({"openat", 1, "AT_FDCWD, \"x\", O_RDONLY", "", true}),
                Not(Contains("error=ENOSPC")));
    EXPECT_THAT(failures_of({"fcntl", 1, "4, F_GETFL", "", true}), IsEmpty());
    EXPECT_THAT(failures_of({"fcntl", 1, "4, F_DUPFD_CLOEXEC, 3", "", true}),
                ElementsAre("error=EMFILE"));
    EXPECT_THAT(failures_of({"getpid", 1, "", "", true}), IsEmpty());
    EXPECT_THAT(failures_of({"close", 1, "5<pipe:[12]>", "", true}), IsEmpty());
    EXPECT_THAT(failures_of({"close", 1, "5</tmp/output>", "", true}),
                ElementsAre("error=EINTR", "error=EIO", "error=ENOSPC"));
    EXPECT_THAT(failures_of({"brk", 1, "0x5", "", true}), ElementsAre("retval=0"));
}

const Mode& some_mode() {
    return modes().front();
}

TEST(Plan, holds_every_failure_of_every_call) {
    const std::vector<Call> calls{{"clock_nanosleep", 3, "", "", true}, {"wait4", 1, "", "", true}};
    const auto faults = all_faults(some_mode(), calls);
    ASSERT_EQ(faults.size(), 3U);
    EXPECT_EQ(tracer_options(faults[2]), "-y -e trace=wait4 -e inject=wait4:error=ECHILD:when=1");
    EXPECT_EQ(description(faults[0]), "w: clock_nanosleep 3 (): error=EINTR");
}

TEST(Plan, of_a_seed_is_always_the_same_choice) {
    std::vector<Call> calls;
    for (int nth = 1; nth <= 100; ++nth) {
        calls.push_back({"clock_nanosleep", nth, "", "", true});
    }
    const auto faults = all_faults(some_mode(), calls);
    const auto described = [](const std::vector<Fault>& chosen) {
        std::vector<std::string> texts;
        std::transform(chosen.begin(), chosen.end(), std::back_inserter(texts), description);
        return texts;
    };
    const auto first = described(choose(faults, 10, 1));
    EXPECT_EQ(first.size(), 10U);
    EXPECT_EQ(first, described(choose(faults, 10, 1)));
    EXPECT_NE(first, described(choose(faults, 10, 2)));
    EXPECT_EQ(choose(faults, 0, 1).size(), 100U);
}

} // namespace
} // namespace faults

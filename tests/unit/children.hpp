// SPDX-License-Identifier: Apache-2.0
// Children of a test: bodies that run in a process of their own, because something ends it, is
// taken from it, or interrupts it.
#pragma once

#include "pipe.hpp"
#include "scratch.hpp"

#include <chrono>
#include <functional>
#include <string>

namespace wivex::test_support {

/// Through which a child tells its parent that it is ready.
class Gate {
public:
    void open() const {
        pipe_.write();
    }
    void wait() const {
        pipe_.read();
    }

private:
    Pipe pipe_;
};

/// Forks a child that runs `body` and exits with its result. Returns the child's process id.
int fork_child(const std::function<int()>& body);

/// Waits for the end of a child; kills it after `limit`. Returns its exit status, 128 plus the
/// number of the signal that ended it, or -1 when it had to be killed.
int end_of_child(int pid, milliseconds limit);

/// Runs `body` in a child that has no rights and can start no process. Returns the child's end.
int without_processes(const std::function<int()>& body);

/// What a program of a test does, in shell text, after which the body of `until_no_more_processes`
/// can start no other.
inline constexpr const char* no_more_processes =
    "/usr/bin/prlimit --pid \"$TESTED_PROCESS\" --nproc=0:0";

/// Runs `body` in a child that has no rights. Returns the child's end.
int until_no_more_processes(const std::function<int()>& body);

/// The end of a child that may have no folder of its own.
inline constexpr int no_own_folder = 77;

/// Runs `body` in a child that sees an empty folder at `path`, in the place of the machine's.
/// Returns the child's end, which must come within 5 seconds, or `no_own_folder`.
int with_empty_folder(const std::string& path, const std::function<int()>& body);

/// A handler of interrupts that ends its process: with 50 at SIGINT, with 60 at SIGTERM.
[[noreturn]] void exit_by_signal(int signal_number);

/// Runs `body` in a child under a handler of interrupts, sends it `signal_number` when it has had
/// time to come to its wait, and returns the child's end, which must come within `limit`.
int end_of_interrupted(int signal_number, const std::function<void()>& body,
                       void (*handler)(int) = exit_by_signal,
                       milliseconds limit = milliseconds(1500));

/// How a child ends that installs `exit_by_signal` and then runs `body`; within 2 seconds.
int end_under_the_handler(const std::function<int()>& body);

} // namespace wivex::test_support

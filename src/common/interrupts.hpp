// SPDX-License-Identifier: Apache-2.0
// When SIGINT and SIGTERM may land.
//
// Their handler prints, writes files and frees memory, so it must never land inside the allocator,
// a stream or a half-updated record. Once held, the two signals are let in only where the program
// waits: there nothing is half done, and the program spends nearly all of its life there.
#pragma once

#include <csignal>

namespace wivex {

/// Installs `handler` for SIGINT and SIGTERM and holds both back from here on. The handler runs
/// with both held, and is expected never to return.
void install_interrupt_handler(void (*handler)(int));

/// True once a handler is installed.
bool interrupts_held();

/// Lets a pending SIGINT or SIGTERM in now.
void let_interrupts_in();

/// The handler's first act, so that it always finishes: the signal that it handles is never let in
/// again, and the other one only where the handler itself is stuck.
void seal_interrupts(int signal_number);

/// True once `seal_interrupts` was called.
bool interrupts_sealed();

/// While it lives, SIGINT and SIGTERM are let in at any moment. Only a single waiting system call
/// may stand in its scope.
class InterruptsOpen {
public:
    InterruptsOpen();
    ~InterruptsOpen();
    InterruptsOpen(const InterruptsOpen&) = delete;
    InterruptsOpen& operator=(const InterruptsOpen&) = delete;
};

/// An alarm that rings when a system call takes longer than usual. Where no handler is installed,
/// it does nothing: there the signals have their default actions.
class CallAlarm {
public:
    enum class Rings { once, again_and_again };
    using Action = void (*)(int, siginfo_t*, void*);

    CallAlarm(Action action, int flags, Rings rings);
    ~CallAlarm();
    CallAlarm(const CallAlarm&) = delete;
    CallAlarm& operator=(const CallAlarm&) = delete;

private:
    struct sigaction before_ {};
    bool armed_ = false;
};

/// For a call on a file, which usually returns at once: while it lives, SIGINT and SIGTERM are let
/// in as soon as the call is stuck. Only a single system call may stand in its scope.
class InterruptsWhenStuck {
public:
    InterruptsWhenStuck();

private:
    struct ClosedAgain {
        ClosedAgain() = default;
        ~ClosedAgain();
        ClosedAgain(const ClosedAgain&) = delete;
        ClosedAgain& operator=(const ClosedAgain&) = delete;
    };

    // Declared first, so it closes last: the alarm could open again what is closed before it.
    ClosedAgain closed_again_;
    CallAlarm alarm_;
};

/// While it lives, a call that is stuck returns with what it has done so far, or with EINTR.
class CallCutShort {
public:
    CallCutShort();

private:
    CallAlarm alarm_;
};

} // namespace wivex

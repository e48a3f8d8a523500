// SPDX-License-Identifier: Apache-2.0
#include "common/interrupts.hpp"

#include "common/signal_set.hpp"

#include <sys/time.h>
#include <ucontext.h>

#include <array>
#include <atomic>
#include <cerrno>

namespace wivex {

namespace {

// A call on a file that takes longer is stuck.
constexpr suseconds_t stuck_after_us = 100'000;

// What the handler shares with the program it interrupts is lock-free, as the language demands.
// Before its version 6 ARM has it from the kernel, which the compiler does not know.
using SharedFlag = std::atomic<bool>;
#if !defined(__ARM_ARCH) || __ARM_ARCH >= 6
static_assert(SharedFlag::is_always_lock_free);
#endif

struct Interrupt {
    int number;
    SharedFlag handled{false};
};

std::array<Interrupt, 2> interrupts{{{SIGINT}, {SIGTERM}}};
SharedFlag held{false};
SharedFlag sealed{false};

// The two signals without the one that is being handled.
sigset_t unhandled_interrupts() {
    sigset_t signals = signal_set({});
    for (const Interrupt& interrupt : interrupts) {
        if (!interrupt.handled) {
            sigaddset(&signals, interrupt.number);
        }
    }
    return signals;
}

void change_mask(int how, const sigset_t& signals) {
    sigprocmask(how, &signals, nullptr);
}

// Waits of the handler itself are bounded: they need no interrupt.
bool can_open() {
    return held && !sealed;
}

// Changes the mask that holds after the alarm's handler: the signals stay let in until the scope of
// the call ends.
void let_in_behind_alarm(int /*signal*/, siginfo_t* /*info*/, void* context) {
    sigset_t& mask = static_cast<ucontext_t*>(context)->uc_sigmask;
    for (const Interrupt& interrupt : interrupts) {
        if (!interrupt.handled) {
            sigdelset(&mask, interrupt.number);
        }
    }
}

void end_call(int /*signal*/, siginfo_t* /*info*/, void* /*context*/) {}

} // namespace

void install_interrupt_handler(void (*handler)(int)) {
    const sigset_t both = unhandled_interrupts();
    change_mask(SIG_BLOCK, both);
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_mask = both;
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
    change_mask(SIG_UNBLOCK, signal_set({SIGALRM}));
    held = true;
}

bool interrupts_held() {
    return held;
}

void let_interrupts_in() {
    const InterruptsOpen open;
}

void seal_interrupts(int signal_number) {
    for (Interrupt& interrupt : interrupts) {
        if (interrupt.number == signal_number) {
            interrupt.handled = true;
        }
    }
    sealed = true;
}

bool interrupts_sealed() {
    return sealed;
}

InterruptsOpen::InterruptsOpen() {
    if (can_open()) {
        change_mask(SIG_UNBLOCK, unhandled_interrupts());
    }
}

InterruptsOpen::~InterruptsOpen() {
    if (can_open()) {
        change_mask(SIG_BLOCK, unhandled_interrupts());
    }
}

CallAlarm::CallAlarm(Action action, int flags, Rings rings) {
    if (!held) {
        return;
    }
    struct sigaction ringing {};
    ringing.sa_sigaction = action;
    ringing.sa_flags = SA_SIGINFO | flags;
    itimerval time{};
    time.it_value.tv_usec = stuck_after_us;
    time.it_interval.tv_usec = rings == Rings::once ? 0 : stuck_after_us;
    armed_ = sigaction(SIGALRM, &ringing, &before_) == 0;
    if (armed_) {
        setitimer(ITIMER_REAL, &time, nullptr);
    }
}

CallAlarm::~CallAlarm() {
    if (!armed_) {
        return;
    }
    const int error = errno;
    constexpr itimerval never{};
    if (setitimer(ITIMER_REAL, &never, nullptr) != 0) {
        // It may still ring: not with the default action, which would end the process.
        before_.sa_handler = SIG_IGN;
    }
    sigaction(SIGALRM, &before_, nullptr);
    errno = error;
}

InterruptsWhenStuck::InterruptsWhenStuck()
    : alarm_(let_in_behind_alarm, SA_RESTART, CallAlarm::Rings::once) {}

InterruptsWhenStuck::ClosedAgain::~ClosedAgain() {
    if (held) {
        change_mask(SIG_BLOCK, unhandled_interrupts());
    }
}

CallCutShort::CallCutShort() : alarm_(end_call, 0, CallAlarm::Rings::again_and_again) {}

} // namespace wivex

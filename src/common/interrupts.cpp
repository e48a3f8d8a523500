#include "common/interrupts.hpp"

#include <signal.h>

namespace wivex {

namespace {

bool held = false;
bool sealed = false;

sigset_t interrupt_signals() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    return signals;
}

void change_mask(int how) {
    const sigset_t signals = interrupt_signals();
    sigprocmask(how, &signals, nullptr);
}

bool can_open() {
    return held && !sealed;
}

} // namespace

void install_interrupt_handler(void (*handler)(int)) {
    change_mask(SIG_BLOCK);
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_mask = interrupt_signals();
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
    held = true;
}

void let_interrupts_in() {
    const InterruptsOpen open;
}

void seal_interrupts() {
    sealed = true;
}

bool interrupts_sealed() {
    return sealed;
}

InterruptsOpen::InterruptsOpen() {
    if (can_open()) {
        change_mask(SIG_UNBLOCK);
    }
}

InterruptsOpen::~InterruptsOpen() {
    if (can_open()) {
        change_mask(SIG_BLOCK);
    }
}

} // namespace wivex

// When SIGINT and SIGTERM may land.
//
// Their handler prints, writes files and frees memory, so it must never land inside the allocator,
// a stream or a half-updated record. Once held, the two signals are let in only where the program
// waits: there nothing is half done, and the program spends nearly all of its life there.
#pragma once

namespace wivex {

/// Installs `handler` for SIGINT and SIGTERM and holds both back from here on. The handler runs
/// with both held, and is expected never to return.
void install_interrupt_handler(void (*handler)(int));

/// Lets a pending SIGINT or SIGTERM in now.
void let_interrupts_in();

/// Nothing is let in any more. The handler's first act, so that it always finishes.
void seal_interrupts();

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

} // namespace wivex

// SPDX-License-Identifier: Apache-2.0
// One of the two output streams, written as its reader lets it be.
//
// A reader that has stopped reading cannot wedge the run, whatever the stream is: the process waits
// for it where an interrupt is let in, and a write that is stuck is cut short. The descriptor is
// shared with others: its flags are never touched.
#pragma once

#include "common/console_helper.hpp"

#include <atomic>
#include <cstddef>
#include <string_view>

namespace wivex {

class ConsoleStream {
public:
    /// What to do while the reader takes nothing.
    enum class Waiting {
        /// Wait; an interrupt is let in.
        long_as_it_takes,
        /// The handler's wait: it ends when not one byte was taken for 2 seconds, or after 10
        /// seconds in all. What is left is dropped then.
        patiently,
        not_at_all,
    };

    explicit constexpr ConsoleStream(int fd) : fd_(fd) {}

    /// Writes the beginning of `text`. Returns its length; 0 when nothing was taken this time; the
    /// whole length when the text cannot be written and is dropped.
    std::size_t write_some(std::string_view text, Waiting waiting);

    /// Waits until all that was taken is where it belongs; not to be called with `not_at_all`.
    void settle(Waiting waiting);

private:
    bool wait_for_reader(Waiting waiting);
    bool wait_for_helper(Waiting waiting);
    bool wait_patiently(int fd, short events);
    std::size_t write_directly(std::string_view text);
    bool served() const {
        return console_helper::serves(fd_);
    }

    int fd_;
    /// Nobody takes text any more.
    std::atomic<bool> given_up_{false};
    /// The last write was not taken whole.
    std::atomic<bool> stalled_{false};
    /// The last write was refused although there seemed to be room.
    std::atomic<bool> refused_{false};
};

} // namespace wivex

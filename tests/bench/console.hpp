// SPDX-License-Identifier: Apache-2.0
// What a run prints to, with the reader that sits at its other end: one that takes all, one that
// is slow, one that has stopped.
//
//     Console console(ConsoleKind::cooked_terminal);
//     const auto run = Bench("endless-event-flood").console(console).args({"-w", "-u"}).start();
//     ASSERT_TRUE(console.shows("CTRL-EVENT-BSS-ADDED"));
//     console.read_at(0);
#pragma once

#include "common/unique_fd.hpp"

#include <atomic>
#include <chrono>
#include <climits>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>

namespace bench_test {

enum class ConsoleKind {
    pipe,
    /// A pipe that holds two pages.
    small_pipe,
    socket,
    /// As a shell finds it: output processing, ^C interrupts, ^S stops. It does not echo.
    cooked_terminal,
    /// A terminal without any processing.
    raw_terminal
};

constexpr bool is_terminal(ConsoleKind kind) {
    return kind == ConsoleKind::cooked_terminal || kind == ConsoleKind::raw_terminal;
}

class Console {
public:
    /// Speed of a reader that takes all there is.
    static constexpr int fast = INT_MAX;

    explicit Console(ConsoleKind kind);
    ~Console() = default;
    Console(const Console&) = delete;
    Console& operator=(const Console&) = delete;

    ConsoleKind kind() const {
        return kind_;
    }

    /// The end that the run gets. Whoever inherits it shares its flags with this one.
    int run_end() const {
        return run_end_.get();
    }

    /// From here on so many bytes are read in a second: 0 for none, `fast` for all.
    void read_at(int bytes_per_second) {
        speed_ = bytes_per_second;
    }

    /// Types on a terminal's keyboard.
    void type(std::string_view text) const;

    /// Whether the text was read, now or within the limit.
    bool shows(std::string_view text, std::chrono::milliseconds limit = std::chrono::seconds(30));

    /// What was read so far; a terminal's carriage returns are left out.
    std::string text() const;

    /// For a run that has ended: lets its end go and reads, at the speed that was chosen, what it
    /// wrote. What comes after the limit is missing.
    std::string rest(std::chrono::milliseconds limit = std::chrono::seconds(30));

    /// Whether the description that the run shares with its children and with whoever started it
    /// was seen in the mode that does not block (O_NONBLOCK), at any moment so far.
    bool was_seen_without_blocking() const {
        return seen_without_blocking_;
    }

private:
    void open_pipe();
    void open_socket();
    void open_terminal();
    void work(const std::stop_token& stop);
    bool take(std::size_t most);
    void look_at_flags();

    ConsoleKind kind_;
    wivex::UniqueFd run_end_;
    wivex::UniqueFd reader_end_;
    mutable std::mutex mutex_;
    std::string text_;
    std::atomic<int> speed_ = fast;
    std::atomic<bool> at_its_end_ = false;
    std::atomic<bool> seen_without_blocking_ = false;
    std::jthread reader_;
};

} // namespace bench_test

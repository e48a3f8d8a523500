// SPDX-License-Identifier: Apache-2.0
// One use of the program: a console read from a descriptor, shown live, reported at its end and,
// for a long run, in between.
#pragma once

#include "reader/run_reader.hpp"
#include "writers/live_view.hpp"

#include <cstdint>
#include <string>

namespace wivex::report {

namespace exit_status {
constexpr int done = 0;
constexpr int run_failed = 1;
/// Also for input that holds no run.
constexpr int usage = 2;
constexpr int not_written = 3;
} // namespace exit_status

struct SessionOptions {
    ReaderOptions reader;
    LiveOptions live;
    /// Where the live view goes; -1: nowhere.
    int live_fd = -1;
    /// Directory of the report; empty: none.
    std::string out;
    /// Seconds between reports while the run goes on; 0: only at its end.
    int refresh = 60;
    /// Where the summary goes.
    int summary_fd = 2;
    /// What is read, for messages.
    std::string name = "standard input";
    /// Tell a run that has not passed, or is not within its limits, by the exit status.
    bool check = false;
};

/// Reads `fd` to its end. Returns an exit status.
int run_session(int fd, const SessionOptions& options);

} // namespace wivex::report

// SPDX-License-Identifier: Apache-2.0
// Catches what the process writes to descriptors 1 and 2, whichever way it writes.
#pragma once

#include <string>
#include <utility>

namespace wivex::test_support {

class ConsoleCapture {
public:
    enum class Streams {
        apart,
        /// Both streams go to one file, so that their order can be seen in `out`.
        together,
    };

    explicit ConsoleCapture(Streams streams = Streams::apart);
    ~ConsoleCapture();
    ConsoleCapture(const ConsoleCapture&) = delete;
    ConsoleCapture& operator=(const ConsoleCapture&) = delete;

    /// What was written to standard output since the last call; what the console still holds is
    /// flushed first.
    std::string out();

    /// What was written to standard error since the last call.
    std::string err();

    /// Both at once: standard output, standard error.
    std::pair<std::string, std::string> streams() {
        return {out(), err()};
    }

    /// Like `out`, without the flush.
    std::string out_without_flush();

private:
    static std::string take(int file, long& position);

    int saved_out_ = -1;
    int saved_err_ = -1;
    int out_file_ = -1;
    int err_file_ = -1;
    long out_position_ = 0;
    long err_position_ = 0;
};

} // namespace wivex::test_support

// SPDX-License-Identifier: Apache-2.0
// Small helpers of the unit tests: a directory that goes away again, files, clocks.
#pragma once

#include "temporary_folder.hpp"

#include <chrono>
#include <string>
#include <string_view>

namespace wivex::test_support {

using std::chrono::milliseconds;

/// A directory of its own that is removed with all it holds.
class ScratchDirectory {
public:
    const std::string& path() const {
        return folder_.path();
    }
    std::string operator/(std::string_view name) const;

    /// Writes a file with this content into the directory and returns its path.
    std::string file(std::string_view name, std::string_view content) const;

    /// Like `file`, executable.
    std::string program(std::string_view name, std::string_view content) const;

private:
    test_tools::TemporaryFolder folder_{"unit-test"};
};

/// The whole content of a file; empty when there is none.
std::string read_file(const std::string& path);

/// Creates an empty file.
void create_file(const std::string& path);

bool exists(const std::string& path);

/// Processor time that this thread has used so far, user and system.
std::chrono::microseconds processor_time();

class Stopwatch {
public:
    std::chrono::milliseconds elapsed() const {
        return std::chrono::duration_cast<std::chrono::milliseconds>(
            std::chrono::steady_clock::now() - start_);
    }

private:
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

/// Gives the run options and the other process-wide state the values they have before `main`.
void reset_process_state();

} // namespace wivex::test_support

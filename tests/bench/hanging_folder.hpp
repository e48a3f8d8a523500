// SPDX-License-Identifier: Apache-2.0
// A folder on a file system of our own that can be made to hang, as a network mount does whose
// server is gone: a write to its one file then waits where not even SIGKILL reaches it.
#pragma once

#include "common/unique_fd.hpp"

#include <atomic>
#include <mutex>
#include <span>
#include <string>
#include <string_view>
#include <thread>

namespace bench_test {

class HangingFolder {
public:
    HangingFolder();
    ~HangingFolder();
    HangingFolder(const HangingFolder&) = delete;
    HangingFolder& operator=(const HangingFolder&) = delete;

    /// False where such a file system cannot be had.
    bool mounted() const {
        return mounted_;
    }

    /// The one file, whatever name is asked for.
    std::string file() const {
        return path_ + "/console";
    }

    /// From here on no write is answered.
    void hang() {
        hangs_ = true;
    }

    /// A write of what holds this text takes its time; when the writer ends meanwhile, it is lost.
    void take_time_for(std::string text);

    /// Gives the file system up: what waits for it fails.
    void release();

    /// What was written so far.
    std::string content() const;

private:
    void serve();
    void answer(std::span<const char> request);
    bool take_in(std::string_view text);

    std::string path_ = "/tmp/hanging-folder-XXXXXX";
    wivex::UniqueFd device_;
    std::atomic<bool> mounted_ = false;
    std::atomic<bool> hangs_ = false;
    mutable std::mutex mutex_;
    std::string content_;
    std::string slow_text_;
    std::thread server_;
};

} // namespace bench_test

// SPDX-License-Identifier: Apache-2.0
// Finds the reports below a folder and reads their bytes.
#pragma once

#include <functional>
#include <string>

namespace wivex::line {

/// Calls `each` with the path of every run.json below `place`, or with `place` when it is a file;
/// it stops when `each` returns false. `unreadable` hears of folders that cannot be read.
void find_reports(const std::string& place, const std::function<bool(const std::string&)>& each,
                  const std::function<void(const std::string&)>& unreadable);

/// The bytes of an ordinary file of bearable size, or why there are none.
constexpr std::size_t most_bytes = std::size_t{32} << 20U;

struct FileBytes {
    std::string bytes;
    std::int64_t size = 0;
    std::string problem;
};

FileBytes read_file(const std::string& path);

} // namespace wivex::line

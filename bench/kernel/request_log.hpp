// SPDX-License-Identifier: Apache-2.0
// The log of the simulated driver: the exact bytes of every request that it was handed.
//
// A request is a line with its number, a line for each block of bytes, and a line with the result.
// Bytes of a pointer, which differ from run to run, are shown as "**", and zeros at the end of a
// block as "00*COUNT".
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace bench {

/// Where a block holds a pointer; no bytes when it holds none.
struct PointerPlace {
    std::size_t offset = 0;
    std::size_t size = 0;
};

/// Text of one request as it is put together.
class RequestEntry {
public:
    explicit RequestEntry(unsigned long request);

    void add_block(const char* name, std::span<const std::uint8_t> bytes,
                   PointerPlace pointer = {});
    /// `result` as the caller gets it; `error` is its errno when it is negative.
    void finish(int result, int error);
    const std::string& text() const {
        return text_;
    }

private:
    std::string text_;
};

/// Appends `entry` to the log file at `path` in one piece.
void append_to_log(const std::string& path, const RequestEntry& entry);

} // namespace bench

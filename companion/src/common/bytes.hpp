// SPDX-License-Identifier: Apache-2.0
// Reading and writing of bytes that survives interrupts and short writes.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>

namespace wivex::report {

/// Writes all of `bytes`, waiting as long as it takes. False when that is not possible.
bool write_all(int fd, std::string_view bytes);

/// Writes all of `bytes` to a non-blocking descriptor, or gives up when nothing could be written
/// for `patience` milliseconds.
bool write_within(int fd, std::string_view bytes, int patience);

/// Reads what is there, at least one byte. 0 at the end, -1 on an error.
long read_some(int fd, std::span<char> buffer);

} // namespace wivex::report

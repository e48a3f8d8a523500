// SPDX-License-Identifier: Apache-2.0
// What the scan mode answers. The numbers are those of the marker lines of its status file,
// negated.
#pragma once

namespace wivex::scan_answer {

inline constexpr int succeeded = 0;
/// The status file of the previous run is there, but cannot be read.
inline constexpr int status_lost = -1;
/// The scan through the kernel failed.
inline constexpr int scan_failed = -2;
/// The scan heard nothing: a shielded room.
inline constexpr int nothing_heard = -3;
/// No access point has the prefix.
inline constexpr int no_match = -4;

} // namespace wivex::scan_answer

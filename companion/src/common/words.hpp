// SPDX-License-Identifier: Apache-2.0
// Numbers and times in words, as a reader likes them.
#pragma once

#include <cstdint>
#include <ctime>
#include <string>
#include <string_view>
#include <vector>

namespace wivex::report {

/// "0.4 s", "12.3 s", "3 min 12 s", "2 h 05 min"; "unknown" for a value that is not a number.
std::string duration_text(double seconds);

/// A number with as many places as its size deserves: "94.1", "0.42", "1200".
std::string figure_text(double value);

/// To three places, which is all that a console can tell: what is judged is what is shown.
double rounded(double value);

/// The same without needless zeros: "30", "0.125", "-60.5".
std::string exact_text(double value);

/// "1 failure", "3 failures".
std::string count_text(std::uint64_t count, std::string_view singular, std::string_view plural);

/// "1 iteration", "3 iterations".
std::string iterations_text(std::uint64_t count);

/// "a, b and c", with `last` ("and", "or") before the last one.
std::string listed(const std::vector<std::string>& texts, const std::string& last);

/// Seconds since 1970 as "YYYY-MM-DD hh:mm:ss" in local time.
std::string local_time(std::time_t seconds);

} // namespace wivex::report

// SPDX-License-Identifier: Apache-2.0
// What can happen to a console between the tool and its reader.
#pragma once

#include "recordings.hpp"

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace report_test {

/// A console as its reader gets it.
struct Disturbed {
    std::string_view how;
    std::string console;
    /// Every run that stands in it may be shown as good: its result file holds no failure.
    bool all_good = false;
    /// The announcements of result files that it would have to hold.
    std::size_t announcements = 1;
};

using Take = std::function<void(const Disturbed& disturbed)>;

/// Whether the result file of the real run is there and holds no failure.
bool is_good(const Recording& recording);

/// Lines with their newlines.
std::vector<std::string_view> lines_of(std::string_view console);

/// How often a console announces a written result file.
std::size_t announcements_in(std::string_view console);

/// Disturbs a recording in every way that needs no other one.
void disturb(const Recording& recording, const Take& take);

/// Puts runs behind each other in many orders, whole and cut, more than a reader keeps.
void join(std::span<const Recording> recordings, const Take& take);

/// Puts more iterations into a recording than a reader keeps.
void outgrow(const Recording& recording, const Recording& good, const Take& take);

} // namespace report_test

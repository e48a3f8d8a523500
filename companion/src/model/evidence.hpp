// SPDX-License-Identifier: Apache-2.0
// What a console shows of a run's frame: a run can only have passed when all of it is there.
#pragma once

#include "model/phases.hpp"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace wivex::report {

/// The first lines of a kind, and how many there were.
struct NotedLines {
    static constexpr std::size_t most = 8;

    std::uint32_t count = 0;
    /// Printable text.
    std::vector<std::string> first;

    void add(std::string line) {
        if (first.size() < most) {
            first.push_back(std::move(line));
        }
        ++count;
    }
};

struct Evidence {
    /// The banner was seen.
    bool began = false;
    /// The last line of the tool was seen.
    bool ended = false;
    /// Lines that say that the run ended early or that its results were lost.
    NotedLines losses;
    /// Lines of the tool that this program does not know.
    NotedLines unknown;
    /// Iterations in which a line of the tool itself judged the phase.
    std::array<std::uint32_t, phase_count> judged{};
    /// Iterations in which the mode showed that it had passed.
    std::uint32_t mode_passes = 0;
    /// The line of the softAP mode.
    std::string softap_line;

    std::uint32_t judged_in(Phase phase) const {
        return judged.at(index_of(phase));
    }
};

} // namespace wivex::report

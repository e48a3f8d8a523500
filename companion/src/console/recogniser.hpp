// SPDX-License-Identifier: Apache-2.0
// Finds the tool's own texts in a console line, also when another writer's bytes stand before
// them or two texts share a line.
#pragma once

#include "console/console_texts.hpp"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace wivex::report {

class Recogniser {
public:
    /// In a line.
    static constexpr std::size_t most_matches = 4;

    Recogniser();

    /// The texts found in `line`, in their order. The span holds until the next call.
    std::span<const Match> read(std::string_view line);

    /// True when `line` can only be one of the tool, whether its table has it or not.
    static bool looks_like_the_tool(std::string_view line);

    /// True when `line` begins with one of the tool's texts.
    bool begins_with_text(std::string_view line) const;

private:
    struct Node {
        const TextRow* row;
        /// The longest other text that this one begins with; -1: none.
        int parent;
    };

    const TextRow* at_start(std::string_view line) const;
    const TextRow* at_end(std::string_view line) const;
    void read_from_start(std::string_view line);
    void read_displaced(std::string_view line);
    void add(const TextRow& row, std::string_view argument, std::string_view said);

    std::vector<Node> by_start_;
    /// Where the texts that begin with a given byte lie in `by_start_`.
    std::array<std::uint16_t, 257> first_{};
    std::vector<const TextRow*> by_end_;
    std::vector<const TextRow*> inside_;
    std::array<Match, most_matches> found_{};
    std::size_t count_ = 0;
};

} // namespace wivex::report

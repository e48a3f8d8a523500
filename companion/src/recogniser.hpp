// SPDX-License-Identifier: Apache-2.0
// Finds the tool's own texts in a console line, also when another writer's bytes stand before
// them or two texts share a line.
#pragma once

#include "console_texts.hpp"

#include <array>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace wivex::report {

struct Finding {
    const TextRow* row = nullptr;
    /// What follows the text (or stands before it, for `Shape::ends`).
    std::string_view argument;
};

class Recogniser {
public:
    Recogniser();

    /// The texts found in `line`, in their order. The span holds until the next call.
    std::span<const Finding> read(std::string_view line);

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
    void add(const TextRow& row, std::string_view argument);

    std::vector<Node> by_start_;
    /// Where the texts that begin with a given byte lie in `by_start_`.
    std::array<std::uint16_t, 257> first_{};
    std::vector<const TextRow*> by_end_;
    std::vector<const TextRow*> inside_;
    std::array<Finding, 4> found_{};
    std::size_t count_ = 0;
};

} // namespace wivex::report

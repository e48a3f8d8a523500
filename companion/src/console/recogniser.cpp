// SPDX-License-Identifier: Apache-2.0
#include "console/recogniser.hpp"

#include <algorithm>

namespace wivex::report {

namespace {

// Any program's line may end in a shorter text, or in dashes; no shorter line holds a text.
constexpr std::size_t shortest_displaced_text = 11;

bool stands_at_start(Shape shape) {
    return shape == Shape::whole || shape == Shape::begins || shape == Shape::open;
}

bool ends_before(const TextRow* left, const TextRow* right) {
    return std::ranges::lexicographical_compare(left->text.rbegin(), left->text.rend(),
                                                right->text.rbegin(), right->text.rend());
}

// Event messages, scan listings (with their tabs) and status replies (key=value) carry texts of
// other devices, which may spell anything: whatever stands behind these, it is not the tool.
bool is_foreign(std::string_view line) {
    if (line.size() > 2 && line[0] == '<' && line[2] == '>') {
        return true;
    }
    return line.find_first_of("=\t") != std::string_view::npos;
}

} // namespace

Recogniser::Recogniser() {
    for (const TextRow& row : console_texts()) {
        if (stands_at_start(row.shape)) {
            by_start_.push_back({&row, -1});
        }
        if (row.shape == Shape::ends ||
            (row.shape == Shape::whole && row.text.size() >= shortest_displaced_text &&
             row.text.front() != '-')) {
            by_end_.push_back(&row);
        }
        if (row.shape == Shape::inside) {
            inside_.push_back(&row);
        }
    }
    std::ranges::sort(by_start_, {}, [](const Node& node) { return node.row->text; });
    std::ranges::sort(by_end_, ends_before);
    for (std::size_t i = 1; i < by_start_.size(); ++i) {
        int parent = static_cast<int>(i) - 1;
        while (parent >= 0 && !by_start_[i].row->text.starts_with(
                                  by_start_[static_cast<std::size_t>(parent)].row->text)) {
            parent = by_start_[static_cast<std::size_t>(parent)].parent;
        }
        by_start_[i].parent = parent;
    }
    std::size_t position = 0;
    for (std::size_t byte = 0; byte < 256; ++byte) {
        first_.at(byte) = static_cast<std::uint16_t>(position);
        while (position < by_start_.size() &&
               static_cast<unsigned char>(by_start_[position].row->text.front()) == byte) {
            ++position;
        }
    }
    first_.at(256) = static_cast<std::uint16_t>(position);
}

// All texts that a line begins with are, in sorted order, among the last one not after the line
// and its parents.
const TextRow* Recogniser::at_start(std::string_view line) const {
    if (line.empty()) {
        return nullptr;
    }
    const auto byte = static_cast<unsigned char>(line.front());
    const auto begin = by_start_.begin() + first_.at(byte);
    const auto end = by_start_.begin() + first_.at(byte + 1U);
    const auto after = std::upper_bound(
        begin, end, line, [](std::string_view text, const Node& n) { return text < n.row->text; });
    if (after == begin) {
        return nullptr;
    }
    for (int i = static_cast<int>(after - by_start_.begin()) - 1; i >= 0;
         i = by_start_[static_cast<std::size_t>(i)].parent) {
        const TextRow& row = *by_start_[static_cast<std::size_t>(i)].row;
        const bool fits = row.shape == Shape::whole ? line == row.text : line.starts_with(row.text);
        if (fits) {
            return &row;
        }
    }
    return nullptr;
}

const TextRow* Recogniser::at_end(std::string_view line) const {
    const auto after = std::upper_bound(
        by_end_.begin(), by_end_.end(), line, [](std::string_view text, const TextRow* row) {
            return std::ranges::lexicographical_compare(text.rbegin(), text.rend(),
                                                        row->text.rbegin(), row->text.rend());
        });
    for (auto i = after; i != by_end_.begin();) {
        --i;
        if (line.ends_with((*i)->text)) {
            return *i;
        }
        if (line.empty() || (*i)->text.back() != line.back()) {
            break;
        }
    }
    return nullptr;
}

void Recogniser::add(const TextRow& row, std::string_view argument, std::string_view said) {
    if (count_ < found_.size()) {
        found_.at(count_) = {&row, argument, said};
        ++count_;
    }
}

void Recogniser::read_from_start(std::string_view line) {
    while (const TextRow* const row = at_start(line)) {
        const std::string_view said = line;
        line.remove_prefix(row->text.size());
        add(*row, line, said);
        if (row->shape != Shape::open || count_ == found_.size()) {
            return;
        }
    }
}

void Recogniser::read_displaced(std::string_view line) {
    if (const TextRow* const row = at_end(line); row != nullptr) {
        const std::string_view before = line.substr(0, line.size() - row->text.size());
        if (row->shape == Shape::ends || !is_foreign(before)) {
            add(*row, before, line);
            return;
        }
    }
    const std::size_t prefix = line.find(tool_prefix, 1);
    if (prefix != std::string_view::npos && !is_foreign(line.substr(0, prefix))) {
        read_from_start(line.substr(prefix));
        return;
    }
    for (const TextRow* row : inside_) {
        const std::size_t position = line.find(row->text);
        if (position != std::string_view::npos) {
            add(*row, line.substr(position + row->text.size()), line.substr(position));
            return;
        }
    }
}

std::span<const Match> Recogniser::read(std::string_view line) {
    count_ = 0;
    read_from_start(line);
    if (count_ == 0 && line.size() >= shortest_displaced_text) {
        read_displaced(line);
    }
    return {found_.data(), count_};
}

bool Recogniser::looks_like_the_tool(std::string_view line) {
    if (line.starts_with("ERROR")) {
        return true;
    }
    const std::size_t prefix = line.find(tool_prefix);
    return prefix == 0 || (prefix != std::string_view::npos && !is_foreign(line.substr(0, prefix)));
}

bool Recogniser::begins_with_text(std::string_view line) const {
    return at_start(line) != nullptr;
}

} // namespace wivex::report

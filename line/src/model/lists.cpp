// SPDX-License-Identifier: Apache-2.0
#include "model/lists.hpp"

#include <algorithm>

namespace wivex::line {

namespace {

constexpr std::size_t most_entries = 500;
// Beyond this many lists only counts grow: memory stays bounded, whatever comes.
constexpr std::size_t most_lists = 400;

bool newer(const ListEntry& one, const ListEntry& other) {
    return one.began != other.began ? one.began > other.began : one.unit_no > other.unit_no;
}

void cut(std::vector<ListEntry>& entries) {
    std::ranges::sort(entries, newer);
    entries.resize(std::min(entries.size(), most_entries));
}

} // namespace

void Lists::add(const std::string& name, const std::string& title, const ListEntry& entry) {
    auto found = lists_.find(name);
    if (found == lists_.end()) {
        if (lists_.size() == most_lists) {
            return;
        }
        found = lists_.emplace(name, List{title, 0, {}}).first;
    }
    List& list = found->second;
    ++list.count;
    list.entries.push_back(entry);
    if (list.entries.size() == 2 * most_entries) {
        cut(list.entries);
    }
}

void Lists::finish() {
    for (auto& [name, list] : lists_) {
        cut(list.entries);
    }
}

} // namespace wivex::line

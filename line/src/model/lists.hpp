// SPDX-License-Identifier: Apache-2.0
// What the numbers of the pages are made of: lists of attempts, the newest of each.
#pragma once

#include "common/moment.hpp"

#include <map>
#include <string>
#include <vector>

namespace wivex::line {

struct ListEntry {
    std::int64_t unit_no = 0;
    Moment began = 0;
    bool passed = false;
    std::string cause;
    std::string station;
};

struct List {
    std::string title;
    std::int64_t count = 0;
    /// The newest, at most as many as a page shows well; unsorted until Lists::finish.
    std::vector<ListEntry> entries;
};

class Lists {
public:
    /// `name` is that of a file: lower-case letters, digits and hyphens.
    void add(const std::string& name, const std::string& title, const ListEntry& entry);
    void finish();

    const std::map<std::string, List>& all() const {
        return lists_;
    }
    bool has(const std::string& name) const {
        return lists_.contains(name);
    }

private:
    std::map<std::string, List> lists_;
};

} // namespace wivex::line

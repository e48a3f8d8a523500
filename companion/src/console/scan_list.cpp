// SPDX-License-Identifier: Apache-2.0
#include "console/scan_list.hpp"

#include "console/console_texts.hpp"

#include <algorithm>

namespace wivex::report {

namespace {

constexpr long most_listed = 300;

// The bytes that a printed name stands for: "\x20" is one.
std::size_t bytes_of_name(std::string_view printed) {
    std::size_t count = 0;
    for (std::size_t i = 0; i < printed.size(); ++count) {
        i += printed.substr(i).starts_with("\\x") ? 4 : 1;
    }
    return count;
}

// A name has at most 32 bytes and never begins with a blank (it is printed as \x20).
bool can_be_name(std::string_view text) {
    constexpr std::size_t longest_name = 32;
    return !text.starts_with(' ') && bytes_of_name(text) <= longest_name;
}

} // namespace

void ScanList::expect(long count) {
    to_come_ = std::clamp(count, 0L, most_listed);
    listed_ = 0;
}

void ScanList::expect_matches(std::string_view prefix) {
    prefix_ = prefix;
    in_matches_ = !prefix_.empty();
}

std::optional<ListedName> ScanList::take(std::string_view line) {
    if (to_come_ == 0 && !in_matches_) {
        return {};
    }
    if (line.empty()) {
        // The tool begins runs and iterations with an empty line.
        close();
        return {};
    }
    if (!line.starts_with(tool_prefix)) {
        return {};
    }
    const std::string_view name = line.substr(tool_prefix.size());
    if (!can_be_name(name)) {
        close();
        return {};
    }
    if (to_come_ > 0) {
        --to_come_;
        ++listed_;
        // The tool lists the access points of earlier scans again: only the last ones are new.
        const bool fresh = listed_ > known_;
        if (to_come_ == 0) {
            known_ = listed_;
        }
        return ListedName{name, fresh};
    }
    if (name.starts_with(prefix_) && !name.starts_with("APs found with matching prefix are ") &&
        !name.starts_with("More than 50 AP coming with matching prefix")) {
        return ListedName{name, false};
    }
    in_matches_ = false;
    return {};
}

} // namespace wivex::report

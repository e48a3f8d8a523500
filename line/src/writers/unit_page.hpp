// SPDX-License-Identifier: Apache-2.0
// The pages of single units, of lists of units, and of the search.
#pragma once

#include "model/lists.hpp"
#include "store/unit_history.hpp"

#include <functional>
#include <string>
#include <vector>

namespace wivex::line {

/// `report_link` gives the address of the report of a run, or nothing when there is none.
std::string unit_page(const UnitHistory& unit,
                      const std::function<Text(const UnitRun&)>& report_link);

/// `unit_link` gives the name of a unit, as a link when it has a page.
std::string list_page(const List& list, const std::function<std::string(std::int64_t)>& unit_link);

struct SearchRow {
    std::int64_t unit_no = 0;
    std::string serial;
    std::string macs;
    std::string verdict;
    std::string began;
};

/// `all` units are in the database; the rows are those that have pages.
std::string search_page(const std::vector<SearchRow>& rows, std::int64_t all);

/// "passed", or "no pass: ..." of a unit's last attempt.
std::string last_verdict(const std::vector<Attempt>& attempts);

} // namespace wivex::line

// SPDX-License-Identifier: Apache-2.0
// What one report (a run.json of wivex-report) says, as far as a production line keeps it: rows of
// the tables that it fills.
#pragma once

#include "model/row.hpp"
#include "model/tables.hpp"

#include <string>
#include <vector>

namespace wivex::line {

/// Rows without the number of their run, unit and time of adding, which the database gives.
struct RunRecord {
    /// "passed" is 1 only when verdict and limits both say so, and nothing contradicts. "cause"
    /// tells why it is no pass: a cause of wivex-report, or how the run ended. "content_id" names
    /// what the run proves, without times and places: it differs when two reports of one run
    /// disagree.
    Row row;
    std::vector<Row> causes;
    std::vector<Row> limits;
    /// The MAC addresses of the identity and of its console.
    std::vector<std::string> macs;

    bool passed() const {
        return count_in(row[run_place("passed")]) == 1;
    }
    const std::string& text(std::size_t place) const {
        return text_in(row[place]);
    }
    std::int64_t count(std::size_t place) const {
        return count_in(row[place]);
    }
};

struct Report {
    /// Where the file stands.
    std::string path;
    std::string serial;
    std::vector<Row> notes;
    std::vector<RunRecord> runs;
};

} // namespace wivex::line

// SPDX-License-Identifier: Apache-2.0
// Reads all runs, unit by unit, and the sums that pages and checks are made of.
#pragma once

#include "model/factory.hpp"
#include "store/statement.hpp"

namespace wivex::line {

/// Hands each unit with its runs to the factory and finishes it. Memory does not grow with the
/// number of units.
void walk_units(soci::session& session, Factory& factory);

/// Figures of one station with one firmware since a moment.
struct MeasureGroup {
    std::string station;
    std::string firmware;
    /// In the order of the measures of model/tables.hpp.
    std::vector<Sums> sums;
};

std::vector<MeasureGroup> measure_groups(soci::session& session, Moment since);

/// The values that one limit was held against.
struct LimitGroup {
    std::string name;
    std::string comparison;
    double limit = 0;
    std::string unit;
    std::string station;
    std::string firmware;
    Sums values;
    std::int64_t outside = 0;
    std::int64_t unknown = 0;
};

std::vector<LimitGroup> limit_groups(soci::session& session, Moment since);

/// What needs a look before anything is believed.
struct Doubts {
    std::int64_t quarantined = 0;
    std::int64_t conflicts = 0;
    /// MACs that several units claim, and units with several MACs: words and unit number, at most
    /// 100.
    std::vector<std::pair<std::string, std::int64_t>> macs;
};

Doubts doubts(soci::session& session);

/// When the newest run began, as far as it is not in the future; nothing without runs.
std::optional<Moment> newest_run(soci::session& session, Moment now);

} // namespace wivex::line

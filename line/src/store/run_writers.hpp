// SPDX-License-Identifier: Apache-2.0
// The writers of all tables that a run fills.
#pragma once

#include "store/table_writer.hpp"

namespace wivex::line {

struct RunWriters {
    explicit RunWriters(soci::session& session)
        : units(session, units_table, "serial, unit_no", "tc"),
          runs(session, runs_table, "run_id, run_no", "tc"), causes(session, causes_table),
          limits(session, limits_table), notes(session, notes_table), macs(session, macs_table) {}

    TableWriter units;
    TableWriter runs;
    TableWriter causes;
    TableWriter limits;
    TableWriter notes;
    TableWriter macs;
};

} // namespace wivex::line

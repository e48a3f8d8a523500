// SPDX-License-Identifier: Apache-2.0
// Everything that is known of one unit.
#pragma once

#include "model/attempts.hpp"
#include "store/database.hpp"

#include <string>
#include <vector>

namespace wivex::line {

/// A run as people look at it.
struct UnitRun {
    RunKey key;
    std::string verdict;
    Text limits_verdict;
    std::string mode;
    Text began_at;
    std::int64_t iterations = 0;
    std::int64_t iterations_passed = 0;
    Figure throughput_mean;
    Figure signal_mean;
    Figure duration;
    Text report_path;
};

struct MacClaim {
    std::string mac;
    /// Other units that have it too.
    std::vector<std::string> others;
};

struct UnitConflict {
    std::string run_id;
    std::string verdict;
    std::string report_path;
    std::int64_t seen = 0;
};

struct UnitHistory {
    std::int64_t unit_no = 0;
    std::string serial;
    std::vector<MacClaim> macs;
    std::vector<UnitRun> runs;
    /// Runs that are not in the list, because a unit has thousands of them.
    std::int64_t runs_left_out = 0;
    std::vector<UnitConflict> conflicts;

    std::vector<Attempt> attempts() const;
};

/// Reads units; it keeps its statements, so that many units are read quickly.
class UnitReader {
public:
    explicit UnitReader(soci::session& session);

    /// False when there is no such unit.
    bool read(std::int64_t unit_no, UnitHistory& unit);

    /// Nothing when there is no such unit.
    Text serial(std::int64_t unit_no);

    /// The units that a serial number or a MAC address names.
    std::vector<std::int64_t> find(const std::string& name);

private:
    Statement by_serial_;
    Statement by_mac_;
    Statement serial_;
    Statement macs_;
    Statement others_;
    Statement runs_;
    Statement run_count_;
    Statement conflicts_;
};

} // namespace wivex::line

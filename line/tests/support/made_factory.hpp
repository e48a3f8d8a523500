// SPDX-License-Identifier: Apache-2.0
// A factory that never was: units with their attempts over many days, with defects that are known,
// and the truth about it, counted while it is made.
#pragma once

#include "common/moment.hpp"
#include "written_report.hpp"

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace wivex::line {

struct FactoryPlan {
    std::uint64_t seed = 1;
    int days = 30;
    int units_a_day = 200;
    int stations = 6;
    /// S3 loses leases in 8 more of 100; firmware 2.1 of the last 10 days is slow; 5 days ago an
    /// access point dies at noon, for all stations.
    bool defects = false;
    /// When the last attempts begin at the latest; the last day is that of the second before.
    Moment end = 1795305600;
};

struct FactoryTruth {
    std::int64_t units = 0;
    std::int64_t runs = 0;
    std::int64_t first_passes = 0;
    std::int64_t last_passes = 0;
    std::map<std::string, std::int64_t> causes;
    std::map<std::pair<std::string, std::string>, std::int64_t> station_causes;
    /// By the begin of the day: units and first passes.
    std::map<Moment, std::pair<std::int64_t, std::int64_t>> days;
};

/// Hands every attempt of every unit to `each`, in the order of time of the first attempts.
FactoryTruth make_factory(const FactoryPlan& plan,
                          const std::function<void(const WrittenReport&, Moment)>& each);

} // namespace wivex::line

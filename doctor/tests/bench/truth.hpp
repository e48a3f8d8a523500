// SPDX-License-Identifier: Apache-2.0
// Does the doctor tell the truth? It looks at a world, then the run meets the same world anew, and
// what was said is held against what came: neither its questions nor its time change the run.
#pragma once

#include "bench_run.hpp"

#include <string>
#include <vector>

namespace doctor_test {

struct Remark {
    std::string point;
    /// "bad", "not known" or "note".
    std::string state;
    std::string found;
    std::string run_prints;
    std::string mend;
};

struct Diagnosis {
    int status = -1;
    bool ready = false;
    /// Names of the points, in order.
    std::vector<std::string> points;
    std::vector<Remark> remarks;
    /// All that it printed.
    std::string text;

    /// The remarks that are bad.
    std::vector<Remark> bad() const;
    bool knows_all() const;
};

/// A world, and the options of the run in it.
struct World {
    std::string scenario;
    std::string lines;
    std::vector<std::string> options;
    int speed = 10;
    std::string interrupt_at = "12000ms";
};

Diagnosis diagnose(const World& world, const std::vector<std::string>& own_options = {});

/// What the run shows on both streams.
std::string run_console(const World& world);

/// Texts of the run whose causes the doctor can see; each with an entry in the failure codes.
const std::vector<std::string>& visible_texts();

/// The faults that were named and did not come, and those that came and were not named.
/// `begins_later` holds the texts whose causes begin during the run.
std::vector<std::string> lies(const Diagnosis& diagnosis, const std::string& console,
                              const std::vector<std::string>& begins_later);

} // namespace doctor_test

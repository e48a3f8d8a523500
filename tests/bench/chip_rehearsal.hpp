// SPDX-License-Identifier: Apache-2.0
// A run of the diagnostics modes on the bench, with what they leave.
#pragma once

#include "bench_run.hpp"
#include "expected.hpp"

#include <string>
#include <vector>

namespace bench_test {

class ChipRehearsal {
public:
    ChipRehearsal(const std::string& scenario, std::vector<std::string> arguments);

    int status() const {
        return run_.status;
    }
    const std::string& out() const {
        return run_.out;
    }
    const std::string& err() const {
        return run_.err;
    }
    /// What the diagnostics printed: standard output between the driver check and the result file.
    std::string diagnostics() const;

    /// Requests as the driver was handed them, byte by byte.
    std::string driver_log() const {
        return file("driver.log");
    }
    /// What was written to the register files and when they were read.
    std::string chip_log() const {
        return file("chip.log");
    }
    std::string results() const {
        return file("root/WIFIResult");
    }
    bool has_result_file() const {
        return run_.files.contains("root/WIFIResult");
    }
    std::string address_file() const {
        return file("root/WIFIAddr");
    }
    bool has_address_file() const {
        return run_.files.contains("root/WIFIAddr");
    }

private:
    /// Empty when there is no such file.
    std::string file(const std::string& name) const;

    BenchRun run_;
};

/// The run came to its end, with these results.
void expect_results(const ChipRehearsal& run, const std::string& results);

} // namespace bench_test

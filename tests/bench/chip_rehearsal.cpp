// SPDX-License-Identifier: Apache-2.0
#include "chip_rehearsal.hpp"

#include <gtest/gtest.h>

#include <utility>

namespace bench_test {

namespace {

// The pauses between iterations need not be sat through.
constexpr int speed = 10;

} // namespace

ChipRehearsal::ChipRehearsal(const std::string& scenario, std::vector<std::string> arguments)
    : run_(Bench(scenario).faster(speed).args(std::move(arguments)).run()) {}

std::string ChipRehearsal::diagnostics() const {
    const std::string before = "[WIFI]WIFI DRIVER READY\n";
    const std::size_t begin = run_.out.find(before);
    if (begin == std::string::npos) {
        return "no driver check in: " + run_.out;
    }
    const std::string text = run_.out.substr(begin + before.size());
    return text.substr(0, text.find("[WIFI]ResultFile:"));
}

std::string ChipRehearsal::file(const std::string& name) const {
    const auto found = run_.files.find(name);
    return found == run_.files.end() ? "" : found->second;
}

void expect_results(const ChipRehearsal& run, const std::string& results) {
    EXPECT_EQ(0, run.status());
    EXPECT_EQ(results, run.results());
}

} // namespace bench_test

// SPDX-License-Identifier: Apache-2.0
// On the bench: the MAC addresses of a real console are part of the identity, and a run keeps its
// id.

#include "bench_run.hpp"
#include "model/identity.hpp"
#include "model/run_id.hpp"
#include "reader/run_reader.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>

namespace {

using bench_test::Bench;
using bench_test::BenchRun;
using namespace wivex::report;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

Log read_as(const std::string& serial, std::string_view console, std::size_t piece) {
    ReaderOptions options;
    options.identity.serial = serial;
    RunReader reader(options);
    for (; !console.empty(); console.remove_prefix(std::min(piece, console.size()))) {
        reader.feed(console.substr(0, piece));
    }
    reader.finish();
    return reader.log();
}

BenchRun checked(const std::string& scenario) {
    return Bench(scenario).args({"-M", "-m", "2"}).faster(20).streams_together().run();
}

TEST(IdentityOnTheBench, holds_the_address_of_the_interface) {
    const BenchRun bench = checked("mac/broadcom-same");
    const Log log = read_as("4711", bench.out, 4096);
    ASSERT_EQ(log.macs.kernel.size(), 1U) << bench.out;
    EXPECT_EQ(identity_mac(log), log.macs.kernel.front());
    EXPECT_THAT(log.macs.chip, ElementsAre(log.macs.kernel.front()));
    EXPECT_THAT(identity_warnings(log), IsEmpty());
}

TEST(IdentityOnTheBench, tells_a_chip_with_another_address) {
    const BenchRun bench = checked("mac/broadcom-other");
    const Log log = read_as("4711", bench.out, 4096);
    ASSERT_EQ(identity_warnings(log).size(), 1U) << bench.out;
    EXPECT_THAT(identity_warnings(log).front(), HasSubstr("is not the chip's"));
}

TEST(IdentityOnTheBench, keeps_the_id_of_a_run_however_its_console_comes) {
    const BenchRun bench = checked("mac/broadcom-same");
    const Log whole = read_as("4711", bench.out, bench.out.size());
    const Log pieces = read_as("4711", bench.out, 13);
    ASSERT_EQ(whole.runs.size(), 1U) << bench.out << bench.err;
    EXPECT_EQ(run_id(whole, whole.runs[0]), run_id(pieces, pieces.runs.at(0)));
    const Log other = read_as("4712", bench.out, 13);
    EXPECT_NE(run_id(whole, whole.runs[0]), run_id(other, other.runs.at(0)));
}

} // namespace

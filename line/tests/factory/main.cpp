// SPDX-License-Identifier: Apache-2.0
// wivex-line-factory DIR: the reports of a factory that never was, and what is true of it.

#include "made_factory.hpp"

#include <CLI/CLI.hpp>
#include <cstdio>
#include <ctime>
#include <exception>
#include <filesystem>
#include <fstream>

namespace wivex::line {

namespace {

void print(const FactoryTruth& truth) {
    std::printf("%lld units, %lld runs, %lld passed at first, %lld passed at last\n",
                static_cast<long long>(truth.units), static_cast<long long>(truth.runs),
                static_cast<long long>(truth.first_passes),
                static_cast<long long>(truth.last_passes));
    for (const auto& [cause, count] : truth.causes) {
        std::printf("%6lld first attempts ended by %s\n", static_cast<long long>(count),
                    cause.c_str());
    }
}

int start(int argc, char** argv) {
    CLI::App app("Writes the reports of a made factory, each in a folder of its own.",
                 "wivex-line-factory");
    FactoryPlan plan;
    std::string folder;
    app.add_option("folder", folder, "Where the reports go.")->required();
    app.add_option("--seed", plan.seed, "Another factory for each number.");
    app.add_option("--days", plan.days, "So many days.")->check(CLI::Range(1, 1000));
    app.add_option("--units", plan.units_a_day, "Units a day.")->check(CLI::Range(1, 100000));
    bool until_now = false;
    app.add_flag("--until-now", until_now,
                 "Today's units up to now as well; else the last day is yesterday, in UTC.");
    app.add_flag("--defects", plan.defects,
                 "With a bad station, a slow firmware and an access point that dies.");
    CLI11_PARSE(app, argc, argv);
    const Moment now = std::time(nullptr);
    plan.end = until_now ? now : now / seconds_of_day * seconds_of_day;
    std::size_t written = 0;
    const FactoryTruth truth = make_factory(plan, [&](const WrittenReport& report, Moment) {
        const std::filesystem::path place = std::filesystem::path(folder) / report.station /
                                            (report.serial + "-" + std::to_string(*report.attempt));
        std::filesystem::create_directories(place);
        std::ofstream(place / "run.json") << report.text();
        ++written;
    });
    print(truth);
    return written == static_cast<std::size_t>(truth.runs) ? 0 : 1;
}

} // namespace

} // namespace wivex::line

int main(int argc, char** argv) {
    try {
        return wivex::line::start(argc, argv);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "wivex-line-factory: %s\n", error.what());
        return 1;
    }
}

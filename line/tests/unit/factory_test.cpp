// SPDX-License-Identifier: Apache-2.0
#include "made_factory.hpp"
#include "model/factory.hpp"
#include "scratch.hpp"
#include "store/factory_walk.hpp"
#include "writers/line_charts.hpp"

#include <gmock/gmock.h>

#include <algorithm>

namespace wivex::line {

namespace {

using testing::ElementsAre;

// What the model sees of a made factory, without files and database.
class Eye {
public:
    explicit Eye(const FactoryPlan& plan) : factory(plan.end - 1, 100) {
        truth = make_factory(plan, [&](const WrittenReport& report, Moment began) {
            if (report.attempt == 1) {
                hand_on();
            }
            const std::string cause = report.verdict == "unknown" ? "killed" : report.cause;
            runs_.push_back({++run_no_, report.attempt, "", report.verdict == "passed", cause,
                             report.station, report.firmware, began});
        });
        hand_on();
        factory.finish();
    }

    Factory factory;
    FactoryTruth truth;

private:
    void hand_on() {
        if (!runs_.empty()) {
            factory.take(++unit_no_, runs_);
            runs_.clear();
        }
    }

    std::vector<RunKey> runs_;
    std::int64_t run_no_ = 0;
    std::int64_t unit_no_ = 0;
};

std::vector<std::string> marks_of(const Factory& factory) {
    std::vector<std::string> marks;
    for (const StationCause& row : factory.comparisons()) {
        if (row.marked) {
            marks.push_back(row.station + " " + row.cause);
        }
    }
    return marks;
}

void expect_truth(const Factory& factory, const FactoryTruth& truth) {
    const Period& month = factory.periods().back();
    EXPECT_EQ(month.units, truth.units);
    EXPECT_EQ(month.runs, truth.runs);
    EXPECT_EQ(month.retests, truth.runs - truth.units);
    EXPECT_EQ(month.first.all, truth.units);
    EXPECT_EQ(month.first.good, truth.first_passes);
    EXPECT_EQ(month.last.good, truth.last_passes);
    const std::map<std::string, std::int64_t> causes(factory.pareto().begin(),
                                                     factory.pareto().end());
    EXPECT_EQ(causes, truth.causes);
    EXPECT_TRUE(std::ranges::is_sorted(factory.pareto(), std::greater(),
                                       [](const auto& row) { return row.second; }));
    for (const auto& [key, count] : truth.station_causes) {
        EXPECT_EQ(factory.stations().at(key.first).causes.at(key.second), count)
            << key.first << " " << key.second;
    }
    for (const auto& [day, counts] : truth.days) {
        EXPECT_EQ(factory.days().at(day).first.all, counts.first) << day_text(day);
        EXPECT_EQ(factory.days().at(day).first.good, counts.second) << day_text(day);
    }
}

class InUtc : public testing::Test {
protected:
    InUtc() {
        setenv("TZ", "UTC", 1);
        tzset();
    }
};

using FactoryModel = InUtc;

TEST_F(FactoryModel, tells_the_truth_of_a_good_factory) {
    const Eye eye({.seed = 7});
    expect_truth(eye.factory, eye.truth);
    EXPECT_THAT(marks_of(eye.factory), ElementsAre());
}

TEST_F(FactoryModel, marks_the_bad_station_and_the_bad_day_and_nothing_else) {
    const Eye eye({.seed = 11, .defects = true});
    expect_truth(eye.factory, eye.truth);
    EXPECT_THAT(marks_of(eye.factory), ElementsAre("S3 dhcp-client"));
    std::vector<std::string> bad_days;
    const double rate = all_days(eye.factory).rate();
    for (const auto& [begin, day] : eye.factory.days()) {
        if (is_outside(day.first, rate)) {
            bad_days.push_back(day_text(begin));
        }
    }
    EXPECT_THAT(bad_days, ElementsAre("2026-11-16"));
}

TEST_F(FactoryModel, marks_at_most_one_of_a_thousand_good_factories) {
    int marked = 0;
    for (std::uint64_t seed = 1; seed <= 1000; ++seed) {
        const Eye eye({.seed = seed, .days = 10, .units_a_day = 100});
        marked += marks_of(eye.factory).empty() ? 0 : 1;
    }
    RecordProperty("falsely_marked_factories", marked);
    EXPECT_LE(marked, 3);
}

TEST_F(FactoryModel, counts_no_run_of_tomorrow_and_none_without_a_date_in_a_period) {
    Factory factory(1795305599, 10);
    const std::vector<RunKey> ahead{{1, 1, "", true, "", "S1", "", 1795305599 + 86400}};
    const std::vector<RunKey> undated{{2, 1, "", true, "", "S1", "", {}}};
    factory.take(1, ahead);
    factory.take(2, undated);
    factory.finish();
    EXPECT_EQ(factory.periods().back().units, 0);
    EXPECT_EQ(factory.runs_in_the_future(), 1);
    EXPECT_EQ(factory.runs_without_date(), 1);
}

TEST_F(FactoryModel, tells_the_same_through_files_and_database) {
    const Scratch scratch;
    const std::unique_ptr<Database> database = made_database(scratch.path("line.db"));
    const FactoryPlan plan{.seed = 3, .days = 5, .units_a_day = 60, .defects = true};
    std::vector<std::string> paths;
    const FactoryTruth truth = make_factory(plan, [&](const WrittenReport& report, Moment) {
        paths.push_back(scratch.write(std::to_string(paths.size()) + "/run.json", report.text()));
    });
    EXPECT_EQ(add_files(*database, paths).runs, static_cast<std::uint64_t>(truth.runs));
    Factory factory(plan.end - 1, 100);
    std::vector<MeasureGroup> groups;
    ASSERT_TRUE(database
                    ->read([&](soci::session& session) {
                        walk_units(session, factory);
                        groups = measure_groups(session, factory.periods().back().begin);
                    })
                    .good());
    expect_truth(factory, truth);
    EXPECT_EQ(number_from(*database, "select sum(passed) from first_attempts"), truth.first_passes);
    EXPECT_EQ(groups.size(), 12U) << "six stations, two firmwares";
}

} // namespace

} // namespace wivex::line

// SPDX-License-Identifier: Apache-2.0
#include "model/comparison.hpp"

#include "common/words.hpp"
#include "model/series.hpp"

#include <algorithm>
#include <set>

namespace wivex::report {

namespace {

enum class Better : std::uint8_t { more, less };

Middle middle_of(const std::vector<float>& values) {
    if (values.empty()) {
        return {};
    }
    std::vector<float> sorted = values;
    std::ranges::sort(sorted);
    const std::size_t n = sorted.size();
    const double median = (static_cast<double>(sorted[(n - 1) / 2]) + sorted[n / 2]) / 2;
    return {n, median, sorted[(n * 95 + 99) / 100 - 1]};
}

Change change_of(bool significant, bool worse) {
    return !significant ? Change::none : worse ? Change::worse : Change::better;
}

class Comparer {
public:
    explicit Comparer(Comparison& comparison) : comparison_(comparison) {}

    void run() {
        compare_failures();
        const Reported& before = comparison_.before;
        const Reported& after = comparison_.after;
        add("throughput", "Mbit/s", before.throughput, after.throughput, Better::more);
        add("signal", "dBm", before.signal, after.signal, Better::more);
        add("iteration", "s", before.seconds, after.seconds, Better::less);
        for (const Phase phase : all_phases()) {
            add(name_of(phase), "s", before.phases.at(index_of(phase)),
                after.phases.at(index_of(phase)), Better::less);
        }
        correct();
        doubt();
    }

private:
    void compare_failures() {
        const Reported& before = comparison_.before;
        const Reported& after = comparison_.after;
        add_count("iterations that failed", before.failed, after.failed);
        std::set<std::string> ids;
        for (const auto& causes : {before.causes, after.causes}) {
            for (const auto& [id, cause] : causes) {
                ids.insert(id);
            }
        }
        for (const std::string& id : ids) {
            const auto in = [&](const Reported& reported) {
                const auto found = reported.causes.find(id);
                return found == reported.causes.end() ? ReportedCause() : found->second;
            };
            const ReportedCause old = in(before);
            const ReportedCause now = in(after);
            const std::string& words = now.words.empty() ? old.words : now.words;
            add_count(words.empty() ? id : words, old.count, now.count);
        }
    }

    void add_count(const std::string& words, std::uint32_t before, std::uint32_t after) {
        ComparedCount count{
            words, {before, comparison_.before.iterations}, {after, comparison_.after.iterations}};
        count.probability = share_test(count.before, count.after);
        comparison_.failures.push_back(count);
    }

    void add(std::string_view name, std::string_view unit, const std::vector<float>& before,
             const std::vector<float>& after, Better better) {
        if (before.empty() && after.empty()) {
            return;
        }
        comparison_.figures.push_back({name, unit, middle_of(before), middle_of(after),
                                       rank_test(before, after), 1, Change::none});
        better_.push_back(better);
    }

    void correct() {
        std::vector<double> chances;
        for (const ComparedCount& count : comparison_.failures) {
            chances.push_back(count.probability);
        }
        for (const ComparedFigure& figure : comparison_.figures) {
            if (figure.test) {
                chances.push_back(figure.test->probability);
            }
        }
        comparison_.tests = chances.size();
        const std::vector<double> corrected = corrected_for_number(chances);
        std::size_t next = 0;
        for (ComparedCount& count : comparison_.failures) {
            count.corrected = corrected[next++];
            count.change =
                change_of(count.corrected<significance, count.after.part()> count.before.part());
        }
        for (std::size_t i = 0; i < comparison_.figures.size(); ++i) {
            ComparedFigure& figure = comparison_.figures[i];
            if (!figure.test) {
                figure.change = figure.after.count == 0 ? Change::lost : Change::too_few;
                continue;
            }
            figure.corrected = corrected[next++];
            const bool more = figure.test->superiority > 0.5;
            figure.change =
                change_of(figure.corrected < significance, more != (better_[i] == Better::more));
        }
    }

    void doubt() {
        std::vector<std::string>& doubts = comparison_.doubts;
        for (const Reported* side : {&comparison_.before, &comparison_.after}) {
            if (side->iterations < fewest_ranked) {
                doubts.push_back(side->name + " has only " + iterations_text(side->iterations) +
                                 ": fewer than " + std::to_string(fewest_ranked) + " tell nothing");
            }
        }
        for (const ComparedFigure& figure : comparison_.figures) {
            if (figure.change == Change::lost) {
                doubts.push_back(std::string(figure.name) + " has values in " +
                                 comparison_.before.name + " and none in " +
                                 comparison_.after.name);
            }
        }
        if (comparison_.after.verdict == "unknown") {
            doubts.push_back("the verdict on " + comparison_.after.name + ": " +
                             comparison_.after.verdict_words);
        }
    }

    Comparison& comparison_;
    std::vector<Better> better_;
};

std::size_t worse_in(const Comparison& comparison) {
    const auto is_worse = [](const auto& one) { return one.change == Change::worse; };
    return static_cast<std::size_t>(std::ranges::count_if(comparison.failures, is_worse) +
                                    std::ranges::count_if(comparison.figures, is_worse));
}

} // namespace

bool Comparison::is_worse() const {
    return worse_in(*this) != 0;
}

Comparison compare(Reported before, Reported after) {
    Comparison comparison;
    comparison.before = std::move(before);
    comparison.after = std::move(after);
    Comparer(comparison).run();
    return comparison;
}

std::string outcome_of(const Comparison& comparison) {
    if (const std::size_t worse = worse_in(comparison); worse != 0) {
        return "Significantly worse in " + std::to_string(worse) + " of " +
               count_text(comparison.tests, "test", "tests");
    }
    if (!comparison.doubts.empty()) {
        return "Not known: " + comparison.doubts.front();
    }
    return "No significant worsening in " + count_text(comparison.tests, "test", "tests");
}

} // namespace wivex::report

// SPDX-License-Identifier: Apache-2.0
// The test of the tests: whatever happens to a console on its way, a run whose result file holds a
// failure, is missing or was not announced is never shown as good. Tries every recorded console of
// the bench in tens of thousands of disturbed forms, and says how many.

#include "callers.hpp"
#include "disturbances.hpp"
#include "recordings.hpp"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace {

using report_test::Disturbed;
using report_test::Recording;

constexpr std::size_t fewest_recordings = 300;
constexpr std::size_t fewest_green_recordings = 20;
constexpr std::size_t fewest_consoles = 20000;
constexpr std::size_t most_shown = 5;
// No multiple of the kinds of disturbance, so that each gets its looks.
constexpr std::size_t consoles_a_look = 53;
// What outgrows a reader is a thousand times as long as a recording: one recording of so many gets
// it.
constexpr std::size_t outgrowing_each = 4;

// A flood of one line, told in few: every line is disturbed, and the same one need not be so often.
std::string condensed(const std::string& console) {
    constexpr std::size_t most_alike = 20;
    std::string text;
    std::string_view last;
    std::size_t alike = 0;
    for (const std::string_view line : report_test::lines_of(console)) {
        alike = line == last ? alike + 1 : 0;
        last = line;
        if (alike < most_alike) {
            text += line;
        }
    }
    return text;
}

// Many scenarios end alike: each console once.
std::vector<Recording> recordings_to_disturb() {
    std::vector<Recording> recordings = report_test::recordings_in(RECORDINGS_FOLDER);
    std::set<std::pair<std::string, bool>> known;
    std::erase_if(recordings, [&](Recording& recording) {
        recording.console = condensed(recording.console);
        return !known.emplace(recording.console, report_test::is_good(recording)).second;
    });
    return recordings;
}

class Judge {
public:
    /// All callers look at every console of so many.
    explicit Judge(std::size_t all_callers_each) : all_callers_each_(all_callers_each) {}

    void about(const Recording& recording) {
        name_ = recording.name;
    }

    /// Callers take turns; now and then all of them look at one console.
    void take(const Disturbed& disturbed) {
        const std::size_t turn = turn_++;
        ++tried_[std::string(disturbed.how)];
        const report_test::Shown shown = report_test::shown_as(disturbed.console, turn);
        const bool green = shown.green;
        green_ += green ? 1 : 0;
        kept_ += shown.limits_kept ? 1 : 0;
        const bool may_be_green =
            disturbed.all_good &&
            report_test::announcements_in(disturbed.console) >= disturbed.announcements;
        if ((green || shown.limits_kept) && !may_be_green) {
            complain(disturbed, "GREEN, AND MUST NOT BE");
        }
        if (turn % all_callers_each_ == 0) {
            ++by_all_;
            const std::string problem = report_test::wrong_by_caller(disturbed.console);
            if (!problem.empty()) {
                complain(disturbed, problem);
            }
        }
    }

    std::size_t tried() const {
        std::size_t sum = 0;
        for (const auto& [how, count] : tried_) {
            sum += count;
        }
        return sum;
    }
    std::size_t wrong() const {
        return wrong_;
    }
    std::size_t by_all_callers() const {
        return by_all_;
    }
    std::size_t kept() const {
        return kept_;
    }
    std::size_t green() const {
        return green_;
    }
    void print() const {
        for (const auto& [how, count] : tried_) {
            std::printf("  %7zu  %s\n", count, how.c_str());
        }
    }

private:
    void complain(const Disturbed& disturbed, const std::string& what) {
        ++wrong_;
        if (wrong_ <= most_shown) {
            std::printf("%s: %s, %.*s\n%s\n----\n", what.c_str(), name_.c_str(),
                        static_cast<int>(disturbed.how.size()), disturbed.how.data(),
                        disturbed.console.substr(0, 4000).c_str());
        }
    }

    std::size_t all_callers_each_;
    std::size_t turn_ = 0;
    std::string name_;
    std::map<std::string, std::size_t> tried_;
    std::size_t green_ = 0;
    std::size_t kept_ = 0;
    std::size_t wrong_ = 0;
    std::size_t by_all_ = 0;
};

// A good run of two iterations in the mode that the name of `recording` tells, if there is one.
const Recording* good_of_same_mode(const std::vector<Recording>& recordings,
                                   const Recording& recording) {
    const std::string mode = recording.name.substr(recording.name.find_last_of('_'));
    for (const Recording& other : recordings) {
        if (report_test::is_good(other) && other.name.ends_with(mode) &&
            report_test::shown_as(other.console).green) {
            return &other;
        }
    }
    return nullptr;
}

int run() {
    const std::vector<Recording> recordings = recordings_to_disturb();
    if (recordings.size() < fewest_recordings) {
        std::printf("only %zu recordings in %s: the bench tests make them\n", recordings.size(),
                    RECORDINGS_FOLDER);
        return 1;
    }
    Judge plain(1);
    Judge judge(consoles_a_look);
    const auto take = [&](const Disturbed& disturbed) { judge.take(disturbed); };
    std::size_t number = 0;
    for (const Recording& recording : recordings) {
        plain.about(recording);
        plain.take({"as recorded", recording.console, report_test::is_good(recording), 1});
        judge.about(recording);
        report_test::disturb(recording, take);
        if (number++ % outgrowing_each != 0) {
            continue;
        }
        if (const Recording* const good = good_of_same_mode(recordings, recording)) {
            report_test::outgrow(recording, *good, take);
        }
    }
    report_test::join(recordings, take);
    std::printf("%zu recordings of the bench, %zu of them green\n", recordings.size(),
                plain.green());
    judge.print();
    std::printf("%zu consoles tried, %zu green, %zu within limits, %zu of them wrongly\n",
                judge.tried(), judge.green(), judge.kept(), judge.wrong());
    std::printf("%zu of them looked at by all %zu callers\n", judge.by_all_callers(),
                report_test::caller_count());
    const bool meant = plain.green() >= fewest_green_recordings && judge.tried() >= fewest_consoles;
    return meant && judge.wrong() + plain.wrong() == 0 ? 0 : 1;
}

} // namespace

int main() {
    try {
        return run();
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "%s\n", problem.what());
        return 1;
    }
}

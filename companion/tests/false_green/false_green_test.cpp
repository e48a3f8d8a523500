// SPDX-License-Identifier: Apache-2.0
// The test of the tests: whatever happens to a console on its way, a run whose result file holds a
// failure, is missing or was not announced is never shown as good. Tries every recorded console of
// the bench in tens of thousands of disturbed forms, and says how many.

#include "disturbances.hpp"
#include "model/limit_text.hpp"
#include "model/limit_verdict.hpp"
#include "model/verdict.hpp"
#include "reader/run_reader.hpp"
#include "recordings.hpp"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace wivex::report;
using report_test::Disturbed;
using report_test::Recording;

constexpr std::size_t fewest_recordings = 300;
constexpr std::size_t fewest_green_recordings = 20;
constexpr std::size_t fewest_consoles = 20000;
constexpr std::size_t most_shown = 5;

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

std::vector<Recording> recordings_to_disturb() {
    std::vector<Recording> recordings = report_test::recordings_in(RECORDINGS_FOLDER);
    for (Recording& recording : recordings) {
        recording.console = condensed(recording.console);
    }
    return recordings;
}

// What a console is shown as, and whether its runs failed in nothing as far as limits tell.
struct Shown {
    bool green = false;
    bool limits_kept = false;
};

ReaderOptions with_limits() {
    ReaderOptions options;
    for (const char* const limit : {"failures<=0", "warnings<=0", "throughput>=0"}) {
        if (!add_limit(options.limits, limit).empty()) {
            throw std::invalid_argument(limit);
        }
    }
    return options;
}

// The limit of the throughput is left out: a good run of most modes has none.
bool counts_are_kept(const Log& log) {
    const std::vector<LimitResult> results = judge_limits(log);
    return std::ranges::all_of(results, [](const LimitResult& result) {
        return !result.limit.is_count() || result.verdict == LimitVerdict::within;
    });
}

Shown shown_as(const std::string& console) {
    // Copied, because the table of texts need not be sorted again and again.
    static const RunReader fresh(with_limits());
    RunReader reader = fresh;
    reader.feed(console);
    reader.finish();
    return {judge(reader.log()) == RunVerdict::passed, counts_are_kept(reader.log())};
}

bool is_green(const std::string& console) {
    return shown_as(console).green;
}

class Judge {
public:
    void about(const Recording& recording) {
        name_ = recording.name;
    }

    void take(const Disturbed& disturbed) {
        ++tried_[std::string(disturbed.how)];
        const Shown shown = shown_as(disturbed.console);
        const bool green = shown.green;
        green_ += green ? 1 : 0;
        kept_ += shown.limits_kept ? 1 : 0;
        const bool may_be_green =
            disturbed.all_good &&
            report_test::announcements_in(disturbed.console) >= disturbed.announcements;
        if ((green || shown.limits_kept) && !may_be_green) {
            ++wrong_;
            if (wrong_ <= most_shown) {
                std::printf("GREEN, AND MUST NOT BE: %s, %.*s\n%s\n----\n", name_.c_str(),
                            static_cast<int>(disturbed.how.size()), disturbed.how.data(),
                            disturbed.console.substr(0, 4000).c_str());
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
    std::string name_;
    std::map<std::string, std::size_t> tried_;
    std::size_t green_ = 0;
    std::size_t kept_ = 0;
    std::size_t wrong_ = 0;
};

// A good run of two iterations in the mode that the name of `recording` tells, if there is one.
const Recording* good_of_same_mode(const std::vector<Recording>& recordings,
                                   const Recording& recording) {
    const std::string mode = recording.name.substr(recording.name.find_last_of('_'));
    for (const Recording& other : recordings) {
        if (report_test::is_good(other) && other.name.ends_with(mode) && is_green(other.console)) {
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
    Judge plain;
    Judge judge;
    const auto take = [&](const Disturbed& disturbed) { judge.take(disturbed); };
    for (const Recording& recording : recordings) {
        plain.about(recording);
        plain.take({"as recorded", recording.console, report_test::is_good(recording), 1});
        judge.about(recording);
        report_test::disturb(recording, take);
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

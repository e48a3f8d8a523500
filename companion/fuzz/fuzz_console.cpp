// SPDX-License-Identifier: Apache-2.0
// Any bytes as a console: read in chunks of any size, shown live and reported. Besides not
// crashing, the counts have to agree with each other and the files have to be well-formed.

#include "checks.hpp"
#include "console/console_texts.hpp"
#include "model/limit_text.hpp"
#include "model/limit_verdict.hpp"
#include "model/verdict.hpp"
#include "reader/run_reader.hpp"
#include "writers/json_writer.hpp"
#include "writers/live_view.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <numeric>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace report_fuzz;
using namespace wivex::report;

const std::vector<Limit>& limits() {
    static const std::vector<Limit> all = [] {
        std::vector<Limit> list;
        for (const char* const text :
             {"throughput>=30", "throughput.p95>=90", "dhcp<=1s", "iteration.median<=3s",
              "signal>=-60", "failures<=0", "warnings<=1"}) {
            require(add_limit(list, text).empty());
        }
        return list;
    }();
    return all;
}

void check_limits(const Run& run) {
    const bool whole = judge(run).whole;
    for (const LimitResult& result : judge_limits(run)) {
        require(result.verdict != LimitVerdict::within || (whole && result.value));
        require(result.verdict != LimitVerdict::unknown || !result.why.empty());
        require(result.iterations.size() <= std::min<std::size_t>(result.broken, 100));
        require(result.broken <= run.started);
    }
    for (const Excerpt& excerpt : run.worst.excerpts) {
        require(excerpt.first_line <= excerpt.last_line);
        require(excerpt.text.size() <= RecentLines::count * (RecentLines::width + 1));
    }
}

void check_run(const Run& run) {
    check_limits(run);
    const auto ended = std::accumulate(run.outcomes.begin(), run.outcomes.end(), 0U);
    require(ended == run.started);
    require(run.iterations.size() == std::min<std::size_t>(run.started, most_detailed_iterations));
    require(run.failures.size() <= most_detailed_failures);
    for (const Iteration& iteration : run.iterations) {
        for (const PhaseRecord& record : iteration.phases) {
            require(!(record.seconds < 0));
        }
    }
    require(run.access_points.size() <= most_access_points);
    std::uint32_t counted = 0;
    for (const Slice& slice : run.timeline.slices()) {
        require(slice.first == counted);
        counted += slice.iterations;
    }
    require(counted == run.started);
    // No iteration can fail more often than in every check and twice in its mode.
    require(run.all_failures() <= run.started * 8);
    for (const Failure& failure : run.failures) {
        require(failure.iteration < run.started);
        require(failure.lines.empty() || failure.shown_at < failure.lines.size());
    }
}

void check_files(const Log& log) {
    check_markup(log);
    require(!write_json(log).empty());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) {
        return 0;
    }
    const std::size_t chunk = data[0] == 0 ? size : data[0];
    const bool files = (data[1] & 1U) != 0;
    const bool timed = (data[1] & 2U) != 0;
    const bool redraw = (data[1] & 4U) != 0;
    std::string_view console(reinterpret_cast<const char*>(data) + 2, size - 2);

    ReaderOptions options;
    options.arrival_times = timed;
    options.limits = limits();
    RunReader reader(options);
    LiveView live({static_cast<std::uint32_t>(data[1] >> 3U), redraw, 80});
    double now = 1000;
    while (!console.empty()) {
        const std::string_view piece = console.substr(0, chunk);
        reader.feed(piece, now);
        console.remove_prefix(piece.size());
        now += 1.5;
        if (files) {
            live.update(reader.progress(), now);
        }
    }
    reader.finish(now);
    for (const Run& run : reader.log().runs) {
        check_run(run);
    }
    require(reader.log().runs.size() <= most_runs);
    if (files) {
        live.finish(reader.progress());
        check_files(reader.log());
    }
    return 0;
}

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t most);

// Half of the mutations put one of the tool's own texts somewhere, mostly as a line.
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t most, unsigned int seed) {
    std::minstd_rand random(seed);
    const auto texts = console_texts();
    if (size < 2 || random() % 2 == 0) {
        return LLVMFuzzerMutate(data, size, most);
    }
    std::string text(texts[random() % texts.size()].text);
    if (random() % 4 != 0) {
        text = "\n" + text + (random() % 3 == 0 ? "7" : "") + "\n";
    }
    if (size + text.size() > most) {
        return LLVMFuzzerMutate(data, size, most);
    }
    const std::size_t at = 2 + random() % (size - 1);
    std::memmove(data + at + text.size(), data + at, size - at);
    std::copy(text.begin(), text.end(), data + at);
    return size + text.size();
}

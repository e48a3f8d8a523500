// SPDX-License-Identifier: Apache-2.0
// The live view: a few lines that a terminal of 80 columns redraws, or, where there is none, one
// plain line for every iteration.
#pragma once

#include "model/progress.hpp"

#include <cstdint>
#include <string>
#include <vector>

namespace wivex::report {

struct LiveOptions {
    /// Iterations that the run will have; 0: unknown.
    std::uint32_t iterations = 0;
    /// Redraw in place; otherwise plain lines.
    bool redraw = false;
    std::size_t columns = 80;
};

class LiveView {
public:
    explicit LiveView(LiveOptions options) : options_(options) {}

    /// What to write now to bring the view up to date, at `now` on the clock of the progress.
    std::string update(const Progress& progress, double now);

    /// The last words, once the console has ended.
    std::string finish(const Progress& progress);

    void set_columns(std::size_t columns) {
        options_.columns = columns;
    }

private:
    std::string news(const Progress& progress);
    std::string news_behind_details(const Run& run);
    std::string iteration_line(const Run& run, const Iteration& iteration) const;
    std::string title_line(const Run& run) const;
    std::string time_line(const Progress& progress, double now) const;
    std::vector<std::string> screen(const Progress& progress, double now) const;
    std::string erase() const;
    std::string fitted(std::string line) const;
    double seconds_left(const Progress& progress, double now) const;

    LiveOptions options_;
    std::size_t drawn_ = 0;
    std::uint64_t told_runs_ = 0;
    std::uint32_t told_iterations_ = 0;
    /// Failed iterations behind those that are kept in detail.
    std::uint32_t told_failed_behind_ = 0;
};

} // namespace wivex::report

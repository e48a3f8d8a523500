// SPDX-License-Identifier: Apache-2.0
#include "program/compare.hpp"

#include "common/bytes.hpp"
#include "common/files.hpp"
#include "common/printable.hpp"
#include "program/session.hpp"
#include "reader/run_file.hpp"
#include "writers/compare_page.hpp"
#include "writers/compare_words.hpp"
#include "writers/report_files.hpp"

#include <unistd.h>

#include <cstdio>

namespace wivex::report {

namespace {

int refuse(const std::string& problem) {
    std::fprintf(stderr, "wivex-report: %s\n", problem.c_str());
    return exit_status::usage;
}

std::string read_reported(const std::string& path, Reported& reported) {
    reported.name = printable(path);
    std::string content;
    std::string problem = read_whole_file(path, largest_run_file, content);
    if (!problem.empty()) {
        return problem;
    }
    problem = read_run_file(content, reported);
    return problem.empty() ? "" : "cannot compare " + reported.name + ": " + problem;
}

} // namespace

int run_comparison(const std::string& before, const std::string& after, const std::string& out) {
    Reported old;
    Reported now;
    for (auto [path, reported] : {std::pair(&before, &old), std::pair(&after, &now)}) {
        const std::string problem = read_reported(*path, *reported);
        if (!problem.empty()) {
            return refuse(problem);
        }
    }
    if (old.mode != now.mode) {
        return refuse("cannot compare different modes: " + old.name + " is of " + old.mode + ", " +
                      now.name + " of " + now.mode);
    }
    const Comparison comparison = compare(std::move(old), std::move(now));
    write_all(STDOUT_FILENO, comparison_summary(comparison));
    if (!out.empty()) {
        const std::string problem =
            write_into(out, "compare.html", write_comparison_page(comparison));
        if (!problem.empty()) {
            std::fprintf(stderr, "wivex-report: %s\n", problem.c_str());
            return exit_status::not_written;
        }
    }
    return comparison.is_good_enough() ? exit_status::done : exit_status::run_failed;
}

} // namespace wivex::report

// SPDX-License-Identifier: Apache-2.0
#include "evidence.hpp"

#include "text_parts.hpp"

#include <algorithm>
#include <array>
#include <iterator>
#include <span>

namespace faults {

namespace {

using bench_test::BenchRun;
using bench_test::contains_one_of;
using bench_test::lines_of;

constexpr std::array<std::string_view, 17> words_of_failure{
    "FAIL",    "Fail",      "fail",      "ERROR",          "Error",   "error",
    "err ",    "nable ",    "not able ", "not successful", "problem", "Invalid",
    "imeout ", "Time out ", "Not ",      "is not found!",  "ot same"};

/// The system's words for the numbers that calls fail with here.
constexpr std::array<std::string_view, 19> texts_of_numbers{"Interrupted system call",
                                                            "Too many open files",
                                                            "Cannot allocate memory",
                                                            "Permission denied",
                                                            "No such file or directory",
                                                            "Input/output error",
                                                            "Read-only file system",
                                                            "No space left on device",
                                                            "Address already in use",
                                                            "Resource temporarily unavailable",
                                                            "Connection refused",
                                                            "No buffer space available",
                                                            "Protocol not available",
                                                            "Operation not permitted",
                                                            "Broken pipe",
                                                            "No child processes",
                                                            "Device or resource busy",
                                                            "Illegal seek",
                                                            "Out of memory"};

/// Lines about a success, as far as they say that a step was done.
constexpr std::array<std::string_view, 9> words_of_success{
    "uccessful", "Successful", "SUCCESS", "CONNECTED",   "READY",
    "Connected", "started",    "Updated", "Scan is done"};

/// Files that a run leaves and that show what it did; a folder's files begin so.
constexpr std::array<std::string_view, 7> files_of_steps{
    "tmp/output", "tmp/ap_status.txt", "root/WIFIAddr", "driver.log",
    "chip.log",   "air.log",           "parameters/"};

std::vector<std::string> success_lines(const BenchRun& run) {
    std::vector<std::string> lines;
    for (std::string& line : lines_of(run.out)) {
        if (contains_one_of(line, words_of_success) && !speaks_of_failure(line)) {
            lines.push_back(std::move(line));
        }
    }
    return lines;
}

bool shows_steps(const std::string& name) {
    return std::any_of(files_of_steps.begin(), files_of_steps.end(),
                       [&name](std::string_view begin) { return name.starts_with(begin); });
}

// The tool's number stands in every message to the kernel; the messages count, not their bytes.
std::string content_of(const std::string& name, const std::string& content) {
    if (name != "air.log") {
        return content;
    }
    std::string kinds;
    for (const std::string& line : lines_of(content)) {
        kinds += line.substr(0, line.find(':')) + "\n";
    }
    return kinds;
}

std::vector<std::string> files_missing(const BenchRun& whole, const BenchRun& run) {
    std::vector<std::string> names;
    for (const auto& [name, content] : whole.files) {
        if (!shows_steps(name)) {
            continue;
        }
        const auto left = run.files.find(name);
        if (left == run.files.end() ||
            content_of(name, left->second) != content_of(name, content)) {
            names.push_back(name);
        }
    }
    return names;
}

void add(std::vector<std::string>& all, const char* what, const std::vector<std::string>& more) {
    for (const std::string& one : more) {
        all.push_back(what + one);
    }
}

} // namespace

std::vector<std::string> missing(std::vector<std::string> whole, std::vector<std::string> part) {
    std::sort(whole.begin(), whole.end());
    std::sort(part.begin(), part.end());
    std::vector<std::string> result;
    std::set_difference(whole.begin(), whole.end(), part.begin(), part.end(),
                        std::back_inserter(result));
    return result;
}

bool speaks_of_failure(std::string_view line) {
    return contains_one_of(line, words_of_failure) || contains_one_of(line, texts_of_numbers);
}

std::vector<std::string> failures_told(const BenchRun& whole, const BenchRun& run) {
    std::vector<std::string> told = missing(lines_of(run.out), lines_of(whole.out));
    std::erase_if(told, [](const std::string& line) { return !speaks_of_failure(line); });
    return told;
}

std::vector<std::string> steps_missing(const BenchRun& whole, const BenchRun& run) {
    std::vector<std::string> steps;
    add(steps, "command ", missing(whole.commands(), run.commands()));
    add(steps, "line ", missing(success_lines(whole), success_lines(run)));
    add(steps, "file ", files_missing(whole, run));
    return steps;
}

} // namespace faults

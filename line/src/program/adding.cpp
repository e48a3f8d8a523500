// SPDX-License-Identifier: Apache-2.0
#include "program/adding.hpp"

#include "common/content_id.hpp"
#include "common/printable.hpp"
#include "reader/report_files.hpp"
#include "reader/report_reader.hpp"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <thread>

namespace wivex::line {

namespace {

// One commit costs a turn of the disk, so many files share one.
constexpr std::size_t most_files = 100;
constexpr std::size_t most_held_bytes = std::size_t{4} << 20U;
constexpr std::size_t longest_path = 4096;

std::size_t bytes_of(const Incoming& file) {
    if (const auto* const refused = std::get_if<RefusedFile>(&file)) {
        return refused->document.value_or("").size() + 1000;
    }
    return std::get<Report>(file).runs.size() * 5000;
}

const std::string& path_of(const Incoming& file) {
    const auto* const report = std::get_if<Report>(&file);
    return report != nullptr ? report->path : std::get<RefusedFile>(file).path;
}

std::string full_path(const std::string& path) {
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(path, error);
    return report::printable(error ? path : absolute.lexically_normal().string(), longest_path);
}

} // namespace

Incoming read_incoming(const std::string& path) {
    const FileBytes file = read_file(path);
    const std::string place = full_path(path);
    RefusedFile refused{place, file.problem, file.size, content_id(place + "\n" + file.bytes), {}};
    if (!file.problem.empty()) {
        return refused;
    }
    Report report;
    report.path = place;
    const ReadResult result = read_report(file.bytes, "", report, refused.reason);
    if (result == ReadResult::good) {
        return report;
    }
    refused.reason = report::printable(refused.reason, 300);
    if (result == ReadResult::nameless) {
        refused.document = file.bytes;
    }
    return refused;
}

Adding::Adding(Database& database, int patience,
               std::function<void(const Incoming&, const Added&)> safe)
    : database_(database), store_(database), patience_(patience), safe_(std::move(safe)) {}

bool Adding::take(Incoming file) {
    held_bytes_ += bytes_of(file);
    held_.push_back(std::move(file));
    return held_.size() < most_files && held_bytes_ < most_held_bytes ? true : finish();
}

bool Adding::finish() {
    if (held_.empty()) {
        return true;
    }
    const bool written = write(held_) || (result_.error == StoreError::value && write_singly());
    held_.clear();
    held_bytes_ = 0;
    return written;
}

// What one file holds must not keep the others out.
bool Adding::write_singly() {
    for (const Incoming& file : held_) {
        if (write(std::span(&file, 1))) {
            continue;
        }
        if (result_.error != StoreError::value) {
            return false;
        }
        const std::string& path = path_of(file);
        const Incoming refused =
            RefusedFile{path,
                        "the database refuses it: " + report::printable(result_.words, 300),
                        0,
                        content_id(path + "\n" + result_.words),
                        {}};
        if (!write(std::span(&refused, 1))) {
            return false;
        }
    }
    return true;
}

bool Adding::write(std::span<const Incoming> files) {
    std::vector<Added> added;
    result_ = store_.add(files, added);
    // Whether the last commit was done is not known; doing it again changes nothing.
    while (result_.error == StoreError::gone && come_back()) {
        result_ = store_.add(files, added);
    }
    if (result_.good()) {
        tell(files, added);
    }
    return result_.good();
}

bool Adding::come_back() {
    using Clock = std::chrono::steady_clock;
    const Clock::time_point end = Clock::now() + std::chrono::seconds(patience_);
    while (Clock::now() < end) {
        store_.forget_connection();
        const StoreResult result = database_.reconnect();
        if (result.good()) {
            return true;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
    }
    return false;
}

void Adding::tell(std::span<const Incoming> files, const std::vector<Added>& added) {
    for (std::size_t i = 0; i < files.size(); ++i) {
        const Added& one = added.at(i);
        ++totals_.files;
        totals_.runs += one.runs;
        totals_.known += one.known;
        totals_.conflicts += one.conflicts;
        totals_.refused += one.quarantined ? 1U : 0U;
        totals_.refused_before += one.quarantined_before ? 1U : 0U;
        safe_(files[i], one);
    }
}

} // namespace wivex::line

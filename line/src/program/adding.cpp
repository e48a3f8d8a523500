// SPDX-License-Identifier: Apache-2.0
#include "program/adding.hpp"

#include "common/content_id.hpp"
#include "common/printable.hpp"
#include "reader/report_files.hpp"
#include "reader/report_reader.hpp"

#include <chrono>
#include <filesystem>
#include <thread>

namespace wivex::line {

namespace {

constexpr std::size_t longest_path = 4096;

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

bool Adding::take(const Incoming& file) {
    if (write(file) || result_.error != StoreError::value) {
        return result_.good();
    }
    const std::string& path = path_of(file);
    return write(RefusedFile{path,
                             "the database refuses it: " + report::printable(result_.words, 300),
                             0,
                             content_id(path + "\n" + result_.words),
                             {}});
}

bool Adding::write(const Incoming& file) {
    Added added;
    result_ = store_.add(file, added);
    // Whether the last commit was done is not known; doing it again changes nothing.
    while (result_.error == StoreError::gone && come_back()) {
        result_ = store_.add(file, added);
    }
    if (result_.good()) {
        tell(file, added);
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

void Adding::tell(const Incoming& file, const Added& added) {
    ++totals_.files;
    totals_.runs += added.runs;
    totals_.known += added.known;
    totals_.conflicts += added.conflicts;
    totals_.refused += added.quarantined ? 1U : 0U;
    totals_.refused_before += added.quarantined_before ? 1U : 0U;
    safe_(file, added);
}

} // namespace wivex::line

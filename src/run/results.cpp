// SPDX-License-Identifier: Apache-2.0
#include "run/results.hpp"

#include "common/console.hpp"
#include "common/error_code.hpp"

#include <cstring>
#include <optional>

namespace wivex {

namespace {

constexpr ErrorCode highest_code = 33;

void add_record(TestCaseResult& result, ErrorCode code, std::uint32_t iteration) {
    FailureEntry& entry = result.failures[code];
    entry.iterations.push_back(iteration);
    ++entry.count;
}

// The test case of a check that failed.
std::optional<int> owner_of(ErrorCode code) {
    switch (code) {
    case error_code::module_absent:
        return test_case::module;
    case error_code::driver_not_loaded:
    case error_code::interface_down:
        return test_case::driver;
    case error_code::mac_address_differs:
        return test_case::mac_address;
    case error_code::loopback_failed:
        return test_case::loopback;
    case error_code::scan_test_failed:
    case error_code::kernel_scan_failed:
    // Nothing records these two: kept.
    case 8:
    case 9:
        return test_case::scan;
    default:
        return std::nullopt;
    }
}

// Counts records of failures, not failed iterations; the first entry is always the pass.
std::int32_t failure_count(const TestCaseResult& result) {
    std::int32_t sum = 0;
    for (auto entry = result.failures.begin(); entry != result.failures.end(); ++entry) {
        if (entry != result.failures.begin()) {
            sum += entry->second.count;
        }
    }
    return sum;
}

const char* result_path(const std::string& chosen_path) {
    if (chosen_path.empty()) {
        return default_result_file;
    }
    print_out("[WIFI]user file name is %s\n", chosen_path.c_str());
    return chosen_path.c_str();
}

void write_verdicts(const TestCaseResults& results, FileWriter& file) {
    for (std::size_t index = 0; index < results.size(); ++index) {
        if (results[index].enabled == 0) {
            continue;
        }
        const std::int32_t failures = failure_count(results[index]);
        if (failures != 0) {
            file.print("Test case %zu fail # %d\n", index + 1, failures);
        } else {
            file.print("Test case %zu passed \n", index + 1);
        }
    }
}

} // namespace

void enable_test_case(TestCaseResults& results, int index) {
    TestCaseResult& result = results.at(static_cast<std::size_t>(index));
    result.enabled = 1;
    for (ErrorCode code = 0; code <= highest_code; ++code) {
        // This code gets its entry only when it is recorded: kept.
        if (code != error_code::mac_address_differs) {
            result.failures[code] = FailureEntry{};
        }
    }
}

void record_failure(TestCaseResults& results, ErrorCode code, std::uint32_t iteration) {
    if (const std::optional<int> owner = owner_of(code)) {
        add_record(results.at(static_cast<std::size_t>(*owner)), code, iteration);
    }
}

void record_test_case(TestCaseResults& results, int index, ErrorCode code,
                      std::uint32_t iteration) {
    if (index >= 5 && index <= 9) {
        add_record(results.at(static_cast<std::size_t>(index)), code, iteration);
    }
}

void write_result_file(const TestCaseResults& results, const std::string& chosen_path,
                       ResultStream& stream) {
    const char* const path = result_path(chosen_path);
    stream.file = FileWriter(open_to_write(path));
    stream.failed = !stream.file;
    if (stream.failed) {
        // The message is split over the two streams: kept.
        print_err("[WIFI]Unable to open Result File: ");
        print_out("%s\n", path);
        return;
    }
    write_verdicts(results, stream.file);
    // All lines go out in one piece, so that no interrupt leaves half a verdict.
    if (const int error = stream.file.close()) {
        print_err("[WIFI]Unable to write Result File: %s: %s\n", path, std::strerror(error));
    } else {
        print_out("[WIFI]ResultFile: %s Updated\n", path);
    }
}

} // namespace wivex

// SPDX-License-Identifier: Apache-2.0
// Puts reports and refused files into the database. A run's id is its key: the same run twice
// changes nothing, and the same id with another content is kept as a conflict.
#pragma once

#include "model/report.hpp"
#include "store/database.hpp"

#include <memory>
#include <string>
#include <variant>

namespace wivex::line {

/// A file that is no report of a known unit.
struct RefusedFile {
    std::string path;
    std::string reason;
    std::int64_t size = 0;
    /// Made of its bytes, or of its path when it could not be read.
    std::string id;
    /// Its text, when only the name of the unit is missing.
    Text document;
};

using Incoming = std::variant<Report, RefusedFile>;

/// What became of one file.
struct Added {
    std::uint32_t runs = 0;
    std::uint32_t known = 0;
    std::uint32_t conflicts = 0;
    bool quarantined = false;
    bool quarantined_before = false;
};

class ReportStore {
public:
    explicit ReportStore(Database& database);
    ~ReportStore();
    ReportStore(const ReportStore&) = delete;
    ReportStore& operator=(const ReportStore&) = delete;

    /// Adds the file in one transaction: all of it, or nothing when the result is not good. `added`
    /// tells what became of it.
    StoreResult add(const Incoming& file, Added& added);

    /// The same after the connection was made anew.
    void forget_connection();

private:
    class Writer;

    Database& database_;
    std::unique_ptr<Writer> writer_;
};

} // namespace wivex::line

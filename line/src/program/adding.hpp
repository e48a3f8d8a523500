// SPDX-License-Identifier: Apache-2.0
// Reads files and adds them to the database, each in a transaction of its own. A file is added as a
// whole or not at all, and told of as added only when it is safe.
#pragma once

#include "store/report_store.hpp"

#include <functional>
#include <string>
#include <vector>

namespace wivex::line {

/// What a file holds, as the database takes it.
Incoming read_incoming(const std::string& path);

struct AddTotals {
    std::uint64_t files = 0;
    std::uint64_t runs = 0;
    std::uint64_t known = 0;
    std::uint64_t conflicts = 0;
    std::uint64_t refused = 0;
    std::uint64_t refused_before = 0;
};

class Adding {
public:
    /// `safe` hears of each file after it is safe. `patience` is how many seconds to wait for a
    /// database that is gone.
    Adding(Database& database, int patience,
           std::function<void(const Incoming&, const Added&)> safe);

    /// Adds a file; false when the database fails for good, then `result` says why.
    bool take(const Incoming& file);

    const AddTotals& totals() const {
        return totals_;
    }
    const StoreResult& result() const {
        return result_;
    }

private:
    bool write(const Incoming& file);
    bool come_back();
    void tell(const Incoming& file, const Added& added);

    Database& database_;
    ReportStore store_;
    int patience_;
    std::function<void(const Incoming&, const Added&)> safe_;
    AddTotals totals_;
    StoreResult result_;
};

} // namespace wivex::line

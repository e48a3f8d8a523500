// SPDX-License-Identifier: Apache-2.0
// The files that were refused, and how one of them is taken back.
#pragma once

#include "store/report_store.hpp"

#include <functional>

namespace wivex::line {

struct QuarantinedFile {
    std::int64_t number = 0;
    std::string path;
    std::string reason;
    std::int64_t size = 0;
    std::int64_t seen = 0;
    bool can_be_named = false;
    Text named_serial;
};

/// Each refused file in the order in which they came; with `all` those that were taken back too.
StoreResult list_quarantine(Database& database, bool all,
                            const std::function<void(const QuarantinedFile&)>& each);

/// The text of a refused file that only lacks the name of its unit, or an objection in words.
StoreResult nameless_document(Database& database, std::int64_t number, std::string& objection,
                              std::string& path, std::string& document);

/// Notes that the file now belongs to `serial`. Its report has to be added before.
StoreResult mark_named(Database& database, std::int64_t number, const std::string& serial);

} // namespace wivex::line

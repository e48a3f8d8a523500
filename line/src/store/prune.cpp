// SPDX-License-Identifier: Apache-2.0
#include "store/prune.hpp"

#include <array>

namespace wivex::line {

StoreResult prune(Database& database, std::int64_t moment, Pruned& pruned) {
    StoreResult result = database.transact([&](soci::session& session) {
        Statement count(session,
                        "select count(*) from runs where coalesce(began_utc_s, added_utc_s) < :a "
                        "and report_path is not null",
                        "c", "c");
        pruned.runs = count.run({moment}) ? count.count(0) : 0;
        for (const char* const table : {"run_causes", "run_limits", "run_notes"}) {
            Statement(session,
                      "delete from " + std::string(table) +
                          " where run_no in (select run_no from runs "
                          "where coalesce(began_utc_s, added_utc_s) < :a)",
                      "c")
                .run({moment});
        }
        Statement(session,
                  "update runs set report_path = null where report_path is not null and "
                  "coalesce(began_utc_s, added_utc_s) < :a",
                  "c")
            .run({moment});
        Statement(session,
                  "update quarantine set document = null where named_serial is not null and "
                  "seen_utc_s < :a",
                  "c")
            .run({moment});
    });
    return result;
}

} // namespace wivex::line

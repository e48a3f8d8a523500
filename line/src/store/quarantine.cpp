// SPDX-License-Identifier: Apache-2.0
#include "store/quarantine.hpp"

#include <ctime>

namespace wivex::line {

StoreResult list_quarantine(Database& database, bool all,
                            const std::function<void(const QuarantinedFile&)>& each) {
    return database.read([&](soci::session& session) {
        Statement rows(session,
                       "select quarantine_no, path, reason, size_bytes, seen_utc_s, "
                       "case when document is null then 0 else 1 end, named_serial "
                       "from quarantine where quarantine_no > :a and "
                       "(named_serial is null or :b = 1) order by quarantine_no limit 1000",
                       "cc", "cttccct");
        std::int64_t last = 0;
        for (bool more = true; more;) {
            more = false;
            for (bool row = rows.begin({last, std::int64_t{all ? 1 : 0}}); row; row = rows.next()) {
                last = rows.count(0);
                more = true;
                each({last, rows.text(1), rows.text(2), rows.count(3), rows.count(4),
                      rows.count(5) == 1, rows.optional_text(6)});
            }
        }
    });
}

StoreResult nameless_document(Database& database, std::int64_t number, std::string& objection,
                              std::string& path, std::string& document) {
    return database.read([&](soci::session& session) {
        Statement row(session,
                      "select path, document, named_serial from quarantine "
                      "where quarantine_no = :a",
                      "c", "ttt");
        if (!row.run({number})) {
            objection = "quarantine holds no file number " + std::to_string(number);
            return;
        }
        path = row.text(0);
        document = row.text(1);
        const std::string file = "file " + std::to_string(number);
        objection = row.is_null(1)    ? file + " lacks more than the name of its unit"
                    : !row.is_null(2) ? file + " was taken back before"
                                      : "";
    });
}

StoreResult mark_named(Database& database, std::int64_t number, const std::string& serial) {
    return database.transact([&](soci::session& session) {
        Statement(session,
                  "update quarantine set named_serial = :a, named_utc_s = :b "
                  "where quarantine_no = :c",
                  "tcc")
            .run({serial, static_cast<std::int64_t>(std::time(nullptr)), number});
    });
}

} // namespace wivex::line

// SPDX-License-Identifier: Apache-2.0
#include "store/database.hpp"

#include "store/schema.hpp"

#include <soci/postgresql/soci-postgresql.h>
#include <soci/sqlite3/soci-sqlite3.h>

#include <exception>
#include <filesystem>

namespace wivex::line {

namespace {

// How long one adder waits for another, in seconds.
constexpr int patience = 120;

bool is_url(const std::string& place) {
    return place.starts_with("postgresql://") || place.starts_with("postgres://");
}

std::string first_line(const std::string& words) {
    const std::string line = words.substr(0, words.find('\n'));
    return line.substr(0, line.find(" while "));
}

bool answers(soci::session& session) {
    try {
        int one = 0;
        session << "select 1", soci::into(one);
        return one == 1;
    } catch (const std::exception&) {
        return false;
    }
}

// PostgreSQL has a class of errors for values; SQLite only finds some too long.
bool is_about_a_value(const std::exception& problem) {
    constexpr std::string_view data_exception = "22";
    constexpr int too_big = 18;
    if (const auto* const error = dynamic_cast<const soci::postgresql_soci_error*>(&problem)) {
        return error->sqlstate().starts_with(data_exception);
    }
    const auto* const error = dynamic_cast<const soci::sqlite3_soci_error*>(&problem);
    return error != nullptr && error->result() == too_big;
}

// Two adders waited for each other, and this one was told to give way.
bool lost_against_another(const std::exception& problem) {
    constexpr std::string_view transaction_rollback = "40";
    const auto* const error = dynamic_cast<const soci::postgresql_soci_error*>(&problem);
    return error != nullptr && error->sqlstate().starts_with(transaction_rollback);
}

void roll_back(soci::session& session) {
    try {
        session << "rollback";
    } catch (const std::exception&) {
        // The connection is gone, or the database has rolled back by itself.
    }
}

// Quotes a path for the library, which knows no escapes.
std::string file_name(const std::string& path) {
    return "dbname=\"" + path + "\"";
}

std::unique_ptr<soci::session> connected(const std::string& place, bool postgresql) {
    if (postgresql) {
        auto session = std::make_unique<soci::session>(*soci::factory_postgresql(), place);
        *session << "set client_encoding to 'UTF8'";
        *session << "set client_min_messages to warning";
        return session;
    }
    auto session = std::make_unique<soci::session>(*soci::factory_sqlite3(), file_name(place));
    *session << "pragma busy_timeout = " + std::to_string(patience * 1000);
    std::string mode;
    *session << "pragma journal_mode = wal", soci::into(mode);
    // What was said to be safe stays when the power goes.
    *session << "pragma synchronous = full";
    *session << "pragma foreign_keys = on";
    *session << "pragma cache_size = -32000";
    return session;
}

} // namespace

Database::Database(std::string place, bool postgresql)
    : place_(std::move(place)), postgresql_(postgresql) {}

StoreResult Database::open(const std::string& place, bool make, std::unique_ptr<Database>& opened) {
    const bool url = is_url(place);
    if (!url && place.find_first_of("\"'") != std::string::npos) {
        return {StoreError::refused, "the path of a database holds no quotation marks: " + place};
    }
    std::error_code error;
    if (!url && !make && !std::filesystem::exists(place, error)) {
        return {StoreError::refused,
                "there is no database at " + place + "; \"wivex-line add\" makes one"};
    }
    std::unique_ptr<Database> database(new Database(place, url));
    StoreResult result = database->reconnect();
    if (result.good()) {
        opened = std::move(database);
    }
    return result;
}

StoreResult Database::reconnect() {
    try {
        session_.reset();
        session_ = connected(place_, postgresql_);
    } catch (const std::exception& problem) {
        // A file that cannot be opened does not come back by itself.
        return {postgresql_ ? StoreError::gone : StoreError::refused, first_line(problem.what())};
    }
    // Who only reads need not wait for those who write.
    bool newest = false;
    StoreResult known = read([&](soci::session& session) { newest = is_up_to_date(session); });
    if (known.good() && newest) {
        return known;
    }
    return transact([this](soci::session& session) { bring_up_to_date(session, postgresql_); });
}

StoreResult Database::transact(const std::function<void(soci::session&)>& work) {
    return run(postgresql_ ? "begin" : "begin immediate", work);
}

StoreResult Database::read(const std::function<void(soci::session&)>& work) {
    return run(postgresql_ ? "begin isolation level repeatable read read only" : "begin", work);
}

StoreResult Database::run(const std::string& begin,
                          const std::function<void(soci::session&)>& work) {
    constexpr int most_tries = 20;
    StoreResult result;
    for (int tries = 0; tries < most_tries; ++tries) {
        bool again = false;
        result = try_once(begin, work, again);
        if (!again) {
            break;
        }
    }
    return result;
}

StoreResult Database::try_once(const std::string& begin,
                               const std::function<void(soci::session&)>& work, bool& again) {
    if (!session_) {
        return {StoreError::gone, "not connected"};
    }
    try {
        *session_ << begin;
        work(*session_);
        *session_ << "commit";
        return {};
    } catch (const std::exception& problem) {
        StoreResult result{is_about_a_value(problem) ? StoreError::value : StoreError::refused,
                           first_line(problem.what())};
        again = lost_against_another(problem);
        roll_back(*session_);
        if (!answers(*session_)) {
            again = false;
            result.error = StoreError::gone;
        }
        return result;
    }
}

} // namespace wivex::line

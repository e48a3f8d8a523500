// SPDX-License-Identifier: Apache-2.0
// The database of a line: one file of SQLite, or PostgreSQL. The two differ here and nowhere else.
#pragma once

#include "store/statement.hpp"

#include <functional>
#include <memory>
#include <string>

namespace wivex::line {

enum class StoreError : std::uint8_t {
    none,
    gone,    ///< the database does not answer: it may come back
    value,   ///< it does not take a value of what was to be written
    refused, ///< it answers, and did not do it: a full disk, a missing right
};

struct StoreResult {
    StoreError error = StoreError::none;
    std::string words;

    bool good() const {
        return error == StoreError::none;
    }
};

class Database {
public:
    /// `place` is the path of a file, or begins with "postgresql://" (or "postgres://"). With
    /// `make` a file that is missing is made; without it that is an error.
    static StoreResult open(const std::string& place, bool make, std::unique_ptr<Database>& opened);

    /// Runs `work` as a whole or not at all, again when another adder was in its way. What it did
    /// is safe when the result is good.
    StoreResult transact(const std::function<void(soci::session&)>& work);

    /// Runs `work` on one unchanging state of the database.
    StoreResult read(const std::function<void(soci::session&)>& work);

    /// The connection anew, after it was gone.
    StoreResult reconnect();

    bool is_postgresql() const {
        return postgresql_;
    }
    const std::string& place() const {
        return place_;
    }

private:
    Database(std::string place, bool postgresql);
    StoreResult run(const std::string& begin, const std::function<void(soci::session&)>& work);
    StoreResult try_once(const std::string& begin, const std::function<void(soci::session&)>& work,
                         bool& again);

    std::string place_;
    bool postgresql_;
    std::unique_ptr<soci::session> session_;
};

} // namespace wivex::line

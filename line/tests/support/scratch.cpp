// SPDX-License-Identifier: Apache-2.0
#include "scratch.hpp"

#include <gtest/gtest.h>

namespace wivex::line {

Scratch::Scratch() {
    std::string form = (std::filesystem::temp_directory_path() / "wivex-line-XXXXXX").string();
    folder_ = mkdtemp(form.data());
}

Scratch::~Scratch() {
    std::error_code error;
    std::filesystem::remove_all(folder_, error);
}

std::string Scratch::write(const std::string& name, const std::string& text) const {
    const std::filesystem::path file = folder_ / name;
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << text;
    return file.string();
}

std::unique_ptr<Database> made_database(const std::string& place) {
    std::unique_ptr<Database> database;
    const StoreResult result = Database::open(place, true, database);
    EXPECT_TRUE(result.good()) << result.words;
    return database;
}

AddTotals add_files(Database& database, const std::vector<std::string>& paths) {
    Adding adding(database, 0, [](const Incoming&, const Added&) {});
    for (const std::string& path : paths) {
        EXPECT_TRUE(adding.take(read_incoming(path))) << adding.result().words;
    }
    return adding.totals();
}

std::int64_t number_from(Database& database, const std::string& sql) {
    std::int64_t number = -1;
    const StoreResult result = database.read([&](soci::session& session) {
        Statement row(session, sql, "", "c");
        number = row.run({}) ? row.count(0) : -1;
    });
    EXPECT_TRUE(result.good()) << result.words;
    return number;
}

} // namespace wivex::line

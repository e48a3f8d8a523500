// SPDX-License-Identifier: Apache-2.0
// A folder of its own for a test, gone at its end, and a database in it.
#pragma once

#include "program/adding.hpp"

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

namespace wivex::line {

class Scratch {
public:
    Scratch();
    ~Scratch();
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;

    std::string path(const std::string& name) const {
        return (folder_ / name).string();
    }
    std::string write(const std::string& name, const std::string& text) const;

private:
    std::filesystem::path folder_;
};

std::unique_ptr<Database> made_database(const std::string& place);

/// Adds the files as the command does.
AddTotals add_files(Database& database, const std::vector<std::string>& paths);

/// The first value of the first row.
std::int64_t number_from(Database& database, const std::string& sql);

} // namespace wivex::line

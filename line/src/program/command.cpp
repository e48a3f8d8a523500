// SPDX-License-Identifier: Apache-2.0
#include "program/command.hpp"

#include "common/printable.hpp"

#include <array>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <thread>

namespace wivex::line {

namespace {

// A URL may hold a password.
std::string shown_place(const std::string& place) {
    const std::size_t at = place.rfind('@');
    const std::size_t begin = place.find("//");
    if (at == std::string::npos || begin == std::string::npos) {
        return place;
    }
    return place.substr(0, begin + 2) + "..." + place.substr(at);
}

} // namespace

std::span<const Command> commands() {
    static const std::array<const Command, 7> list{add_command,  quarantine_command, unit_command,
                                                   page_command, check_command,      export_command,
                                                   prune_command};
    return list;
}

void declare_at(CLI::App& app, std::string& at) {
    app.add_option("--at", at, "As it was at this moment (RFC 3339) instead of now.")
        ->type_name("MOMENT")
        ->check([](const std::string& text) -> std::string {
            return moment_of(text) ? "" : "a moment like 2026-11-22T06:15:00Z is needed";
        });
}

Moment moment_at(const std::string& at) {
    return moment_of(at).value_or(std::time(nullptr));
}

int complain(int status, const std::string& words) {
    std::fprintf(stderr, "wivex-line: %s\n", report::printable(words, 1000).c_str());
    return status;
}

int complain_of(const Context& context, const StoreResult& result) {
    return complain(exit_status::failed,
                    "database " + shown_place(context.database) + ": " + result.words);
}

std::unique_ptr<Database> opened(const Context& context, bool make, int patience) {
    std::unique_ptr<Database> database;
    StoreResult result = Database::open(context.database, make, database);
    if (result.error == StoreError::gone && patience > 0) {
        complain(exit_status::failed, "waiting for the database: " + result.words);
    }
    for (int tries = 0; result.error == StoreError::gone && tries < patience; ++tries) {
        std::this_thread::sleep_for(std::chrono::seconds(1));
        result = Database::open(context.database, make, database);
    }
    if (!result.good()) {
        complain_of(context, result);
    }
    return database;
}

} // namespace wivex::line

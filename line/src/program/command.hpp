// SPDX-License-Identifier: Apache-2.0
// The commands of the program. Each stands in a file of its own, which ends with its entry; the
// list of all of them is the only central place.
#pragma once

#include "common/moment.hpp"
#include "store/database.hpp"

#include <CLI/CLI.hpp>
#include <functional>
#include <span>
#include <string>

namespace wivex::line {

namespace exit_status {
constexpr int done = 0;
constexpr int attention = 1; ///< something was refused or contradicts, or a check is not met
constexpr int usage = 2;
constexpr int failed = 3; ///< database or files could not be read or written
} // namespace exit_status

/// What all commands share.
struct Context {
    std::string database = "line.db";
};

struct Command {
    const char* name;
    const char* summary;
    /// Declares its options; the result runs it and gives its exit status.
    std::function<int()> (*declare)(CLI::App& app, const Context& context);
};

std::span<const Command> commands();

/// Opens the database of the command line, or says why not. One that is gone may come back within
/// `patience` seconds.
std::unique_ptr<Database> opened(const Context& context, bool make, int patience = 0);

/// Declares "--at" for a command that looks at a moment other than now.
void declare_at(CLI::App& app, std::string& at);

/// The moment of "--at"; now without it.
Moment moment_at(const std::string& at);

/// Says what went wrong; the exit status.
int complain(int status, const std::string& words);

/// Says why the database did not do it; the exit status.
int complain_of(const Context& context, const StoreResult& result);

extern const Command add_command;
extern const Command quarantine_command;
extern const Command unit_command;
extern const Command page_command;
extern const Command check_command;
extern const Command export_command;
extern const Command prune_command;

} // namespace wivex::line

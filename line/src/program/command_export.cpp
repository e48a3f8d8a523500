// SPDX-License-Identifier: Apache-2.0
#include "program/command.hpp"
#include "store/schema.hpp"
#include "store/table_dump.hpp"
#include "writers/table_text.hpp"

#include <cstdio>

namespace wivex::line {

namespace {

struct ExportOptions {
    std::string table;
    std::string format = "csv";
};

bool put(const std::string& text) {
    return std::fputs(text.c_str(), stdout) >= 0;
}

int run_export(const ExportOptions& options, const Context& context) {
    const std::unique_ptr<Database> database = opened(context, false);
    if (!database) {
        return exit_status::failed;
    }
    const bool json = options.format == "json";
    std::vector<std::string> names;
    bool written = true;
    bool first = true;
    const StoreResult result = dump_table(
        *database, options.table,
        [&](const std::vector<std::string>& columns) {
            names = columns;
            written = put(json ? "[" : csv_head(names));
        },
        [&](const std::vector<Value>& values) {
            written =
                put(json ? (first ? "\n" : ",\n") + json_object(names, values) : csv_line(values));
            first = false;
            return written;
        });
    written = written && (!json || put("\n]\n"));
    if (!result.good()) {
        return complain_of(context, result);
    }
    return written ? exit_status::done
                   : complain(exit_status::failed, "standard output could not be written");
}

std::function<int()> declare_export(CLI::App& app, const Context& context) {
    const auto options = std::make_shared<ExportOptions>();
    app.add_option("table", options->table, "A table or view.")
        ->required()
        ->check(CLI::IsMember(exported_tables()));
    app.add_option("--format", options->format, "The form of the rows.")
        ->check(CLI::IsMember(std::vector<std::string>{"csv", "json"}))
        ->capture_default_str();
    return [options, &context] { return run_export(*options, context); };
}

} // namespace

const Command export_command{"export", "Write a table or view as CSV or JSON", declare_export};

} // namespace wivex::line

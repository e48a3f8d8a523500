// SPDX-License-Identifier: Apache-2.0
#include "common/moment.hpp"
#include "common/words.hpp"
#include "program/adding.hpp"
#include "program/command.hpp"
#include "reader/report_reader.hpp"
#include "store/quarantine.hpp"

#include <cstdio>

namespace wivex::line {

namespace {

struct QuarantineOptions {
    std::int64_t number = 0;
    std::string serial;
    bool all = false;
};

void print_file(const QuarantinedFile& file) {
    std::string state;
    if (file.named_serial) {
        state = "  (taken back as " + *file.named_serial + ")";
    } else if (file.can_be_named) {
        state = "  (can be taken back: --take " + std::to_string(file.number) + " --serial ...)";
    }
    std::printf("%6lld  %s  %s\n        %s%s\n", static_cast<long long>(file.number),
                moment_text(file.seen).c_str(), file.path.c_str(), file.reason.c_str(),
                state.c_str());
}

int list(const QuarantineOptions& options, const Context& context, Database& database) {
    std::uint64_t files = 0;
    const StoreResult result =
        list_quarantine(database, options.all, [&](const QuarantinedFile& file) {
            ++files;
            print_file(file);
        });
    if (!result.good()) {
        return complain_of(context, result);
    }
    std::printf("%s in quarantine\n", report::count_text(files, "file", "files").c_str());
    return exit_status::done;
}

int take_back(const QuarantineOptions& options, const Context& context, Database& database) {
    const std::string problem = objection_to_serial(options.serial);
    if (!problem.empty()) {
        return complain(exit_status::usage, "--serial: " + problem);
    }
    std::string objection;
    std::string document;
    Report report;
    StoreResult result =
        nameless_document(database, options.number, objection, report.path, document);
    if (!result.good()) {
        return complain_of(context, result);
    }
    if (!objection.empty()) {
        return complain(exit_status::usage, objection);
    }
    std::string reason;
    if (read_report(document, options.serial, report, reason) != ReadResult::good) {
        return complain(exit_status::failed, "the file cannot be taken back: " + reason);
    }
    ReportStore store(database);
    Added added;
    result = store.add(report, added);
    // A break between the two leaves it in the list: taking it back again changes nothing.
    result = result.good() ? mark_named(database, options.number, options.serial) : result;
    if (!result.good()) {
        return complain_of(context, result);
    }
    std::printf("taken back as %s: %s added, %u known before, %s\n", options.serial.c_str(),
                report::count_text(added.runs, "run", "runs").c_str(), added.known,
                report::count_text(added.conflicts, "conflict", "conflicts").c_str());
    return added.conflicts == 0 ? exit_status::done : exit_status::attention;
}

std::function<int()> declare_quarantine(CLI::App& app, const Context& context) {
    const auto options = std::make_shared<QuarantineOptions>();
    CLI::Option* const take =
        app.add_option("--take", options->number, "Take back the file of this number.")
            ->type_name("NUMBER")
            ->check(CLI::PositiveNumber);
    CLI::Option* const serial =
        app.add_option("--serial", options->serial, "The serial number of its unit.")
            ->type_name("SERIAL");
    take->needs(serial);
    serial->needs(take);
    app.add_flag("--all", options->all, "List those that were taken back too.");
    return [options, &context] {
        const std::unique_ptr<Database> database = opened(context, false);
        if (!database) {
            return exit_status::failed;
        }
        return options->number != 0 ? take_back(*options, context, *database)
                                    : list(*options, context, *database);
    };
}

} // namespace

const Command quarantine_command{"quarantine", "List the files that were refused, or take one back",
                                 declare_quarantine};

} // namespace wivex::line

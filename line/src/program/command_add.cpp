// SPDX-License-Identifier: Apache-2.0
#include "common/printable.hpp"
#include "common/words.hpp"
#include "program/adding.hpp"
#include "program/command.hpp"
#include "reader/report_files.hpp"

#include <cstdio>
#include <filesystem>

namespace wivex::line {

namespace {

struct AddOptions {
    std::vector<std::string> places;
    int patience = 30;
    bool verbose = false;
};

std::string words_of(const Added& added) {
    std::string text = report::count_text(added.runs, "run", "runs") + " added";
    if (added.known != 0) {
        text += ", " + std::to_string(added.known) + " known before";
    }
    return text;
}

void tell_of(const Incoming& file, const Added& added, bool verbose) {
    if (const auto* const refused = std::get_if<RefusedFile>(&file)) {
        if (added.quarantined || verbose) {
            std::fprintf(stderr, "wivex-line: %s: %s; it is in quarantine\n", refused->path.c_str(),
                         refused->reason.c_str());
        }
        return;
    }
    const std::string& path = std::get<Report>(file).path;
    if (added.conflicts != 0) {
        std::fprintf(stderr,
                     "wivex-line: %s: %s with another content than before; what came first "
                     "counts, the other is kept as a conflict\n",
                     path.c_str(),
                     report::count_text(added.conflicts, "run comes", "runs come").c_str());
    }
    if (verbose) {
        std::printf("%s: %s\n", path.c_str(), words_of(added).c_str());
        std::fflush(stdout);
    }
}

void print_totals(const AddTotals& totals) {
    std::printf("%s read: %s added, %llu known before, %s, %s to quarantine",
                report::count_text(totals.files, "report", "reports").c_str(),
                report::count_text(totals.runs, "run", "runs").c_str(),
                static_cast<unsigned long long>(totals.known),
                report::count_text(totals.conflicts, "conflict", "conflicts").c_str(),
                std::to_string(totals.refused).c_str());
    if (totals.refused_before != 0) {
        std::printf(" (%llu there before)", static_cast<unsigned long long>(totals.refused_before));
    }
    std::printf("\n");
}

int run_add(const AddOptions& options, const Context& context) {
    for (const std::string& place : options.places) {
        std::error_code error;
        if (!std::filesystem::exists(place, error)) {
            return complain(exit_status::usage, "there is no " + place);
        }
    }
    const std::unique_ptr<Database> database = opened(context, true, options.patience);
    if (!database) {
        return exit_status::failed;
    }
    Adding adding(*database, options.patience, [&](const Incoming& file, const Added& added) {
        tell_of(file, added, options.verbose);
    });
    bool whole = true;
    bool good = true;
    for (const std::string& place : options.places) {
        find_reports(
            place,
            [&](const std::string& path) {
                good = good && adding.take(read_incoming(path));
                return good;
            },
            [&](const std::string& words) {
                whole = false;
                complain(exit_status::attention, words);
            });
    }
    const AddTotals& totals = adding.totals();
    print_totals(totals);
    if (!good) {
        complain_of(context, adding.result());
        return complain(exit_status::failed, "what is told above is safe; the rest was not added: "
                                             "run the same command again");
    }
    const bool clean =
        whole && totals.conflicts == 0 && totals.refused == 0 && totals.refused_before == 0;
    return clean ? exit_status::done : exit_status::attention;
}

std::function<int()> declare_add(CLI::App& app, const Context& context) {
    const auto options = std::make_shared<AddOptions>();
    app.add_option("place", options->places, "A run.json, or a folder: every run.json below it.")
        ->type_name("PLACE")
        ->required();
    app.add_option("--wait", options->patience, "Seconds to wait for a database that is gone.")
        ->type_name("SECONDS")
        ->capture_default_str()
        ->check(CLI::Range(0, 86400));
    app.add_flag("--verbose", options->verbose, "Tell of each report when it is safe.");
    return [options, &context] { return run_add(*options, context); };
}

} // namespace

const Command add_command{"add", "Add reports to the database", declare_add};

} // namespace wivex::line

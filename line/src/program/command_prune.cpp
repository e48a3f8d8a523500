// SPDX-License-Identifier: Apache-2.0
#include "common/words.hpp"
#include "program/command.hpp"
#include "store/prune.hpp"

#include <cstdio>
#include <ctime>

namespace wivex::line {

namespace {

int run_prune(std::int64_t days, const Context& context) {
    const std::unique_ptr<Database> database = opened(context, false);
    if (!database) {
        return exit_status::failed;
    }
    Pruned pruned;
    const std::int64_t moment = std::time(nullptr) - days * 86400;
    const StoreResult result = prune(*database, moment, pruned);
    if (!result.good()) {
        return complain_of(context, result);
    }
    std::printf("%s pruned: causes in detail, limits, notes and the place of the report are gone; "
                "verdicts, figures and counts stay\n",
                report::count_text(static_cast<std::uint64_t>(pruned.runs), "run", "runs").c_str());
    return exit_status::done;
}

std::function<int()> declare_prune(CLI::App& app, const Context& context) {
    const auto days = std::make_shared<std::int64_t>(0);
    app.add_option("--older-than", *days, "Forget the details of runs older than this.")
        ->type_name("DAYS")
        ->required()
        ->check(CLI::Range(1, 36500));
    return [days, &context] { return run_prune(*days, context); };
}

} // namespace

const Command prune_command{"prune", "Forget the details of old runs, never their counts",
                            declare_prune};

} // namespace wivex::line

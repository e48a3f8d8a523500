// SPDX-License-Identifier: Apache-2.0
#include "common/words.hpp"
#include "program/command.hpp"
#include "program/site.hpp"

#include <cstdio>

namespace wivex::line {

namespace {

struct PageOptions {
    SiteOptions site;
    std::string at;
};

int run_page(PageOptions options, const Context& context) {
    options.site.now = moment_at(options.at);
    const std::unique_ptr<Database> database = opened(context, false);
    if (!database) {
        return exit_status::failed;
    }
    const SiteResult result = write_site(*database, options.site);
    if (!result.store.good()) {
        return complain_of(context, result.store);
    }
    if (!result.problem.empty()) {
        return complain(exit_status::failed, result.problem);
    }
    std::printf("%s written; begin with %s/index.html\n",
                report::count_text(result.pages, "page", "pages").c_str(),
                options.site.out.c_str());
    return exit_status::done;
}

std::function<int()> declare_page(CLI::App& app, const Context& context) {
    const auto options = std::make_shared<PageOptions>();
    app.add_option("--out", options->site.out, "The folder of the pages; made when it is missing.")
        ->type_name("DIR")
        ->required();
    app.add_option("--units", options->site.units,
                   "The newest so many units have a page of their own, and as many of those that "
                   "did not pass.")
        ->type_name("N")
        ->capture_default_str()
        ->check(CLI::Range(1, 100000));
    declare_at(app, options->at);
    return [options, &context] { return run_page(*options, context); };
}

} // namespace

const Command page_command{"page", "Write the pages of the line", declare_page};

} // namespace wivex::line

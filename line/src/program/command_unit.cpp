// SPDX-License-Identifier: Apache-2.0
#include "model/identity.hpp"
#include "program/command.hpp"
#include "store/unit_history.hpp"
#include "writers/unit_text.hpp"

#include <algorithm>
#include <cstdio>

namespace wivex::line {

namespace {

int run_unit(const std::string& name, const Context& context) {
    const std::unique_ptr<Database> database = opened(context, false);
    if (!database) {
        return exit_status::failed;
    }
    std::vector<UnitHistory> units;
    const StoreResult result = database->read([&](soci::session& session) {
        UnitReader reader(session);
        std::string mac = name;
        std::ranges::replace(mac, '-', ':');
        mac = report::mac_address(mac);
        std::vector<std::int64_t> found = reader.find(name);
        if (found.empty() && !mac.empty()) {
            found = reader.find(mac);
        }
        for (const std::int64_t unit_no : found) {
            reader.read(unit_no, units.emplace_back());
        }
    });
    if (!result.good()) {
        return complain_of(context, result);
    }
    for (const UnitHistory& unit : units) {
        std::fputs(unit_text(unit).c_str(), stdout);
    }
    return units.empty() ? complain(exit_status::attention, "no run of a unit " + name)
                         : exit_status::done;
}

std::function<int()> declare_unit(CLI::App& app, const Context& context) {
    const auto name = std::make_shared<std::string>();
    app.add_option("unit", *name, "A serial number or a MAC address.")
        ->type_name("SERIAL")
        ->required();
    return [name, &context] { return run_unit(*name, context); };
}

} // namespace

const Command unit_command{"unit", "Tell everything about one unit", declare_unit};

} // namespace wivex::line

// SPDX-License-Identifier: Apache-2.0
#include "checks.hpp"

#include "text.hpp"

namespace wivex::doctor {

namespace {

// The run ends before it looks at anything else.
bool ends_at_configuration(const Facts& facts) {
    return !facts.config_failure.empty();
}

void add_needed(std::vector<Point>& points, const Facts& facts) {
    if (facts.plan.mac || facts.plan.loopback) {
        points.push_back(check_chip(facts));
    }
    if (facts.plan.mode == 'S') {
        points.push_back(check_kernel_scan(facts));
    }
}

} // namespace

std::vector<Point> check_all(const Request& request) {
    Facts facts = gather_facts(request);
    std::vector<Point> points;
    points.push_back(check_root(facts));
    if (ends_at_configuration(facts)) {
        const Point none("none");
        points.push_back(check_configuration(facts, {none, none, none}));
        return points;
    }
    const Point module = check_module_list(facts);
    const Point driver = check_interface(facts);
    Point supplicant("supplicant");
    if (facts.plan.uses_supplicant()) {
        supplicant = check_supplicant(facts);
    }
    points.push_back(check_configuration(facts, {module, driver, supplicant}));
    points.push_back(module);
    points.push_back(driver);
    add_needed(points, facts);
    if (facts.plan.uses_supplicant()) {
        points.push_back(supplicant);
        points.push_back(check_air(facts, supplicant));
    }
    points.push_back(check_programs(facts));
    if (facts.plan.may_own_group()) {
        points.push_back(check_dhcp_settings(facts));
    }
    points.push_back(check_files(facts));
    points.push_back(check_clock(facts));
    return points;
}

} // namespace wivex::doctor

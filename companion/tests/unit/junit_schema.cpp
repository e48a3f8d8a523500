// SPDX-License-Identifier: Apache-2.0
#include "junit_schema.hpp"

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>
#include <vector>

namespace report_test {

namespace {

struct Attribute {
    const char* name;
    bool (*fits)(std::string_view value);
};

bool any(std::string_view /*value*/) {
    return true;
}

bool some(std::string_view value) {
    return !value.empty();
}

bool whole(std::string_view value) {
    return some(value) && value.find_first_not_of("0123456789") == std::string_view::npos;
}

bool decimal(std::string_view value) {
    const std::size_t point = std::min(value.find('.'), value.size());
    return whole(value.substr(0, point)) &&
           (point == value.size() || whole(value.substr(point + 1)));
}

bool date_time(std::string_view value) {
    std::string form(value);
    std::replace_if(
        form.begin(), form.end(), [](char c) { return c >= '0' && c <= '9'; }, '0');
    return form == "0000-00-00T00:00:00";
}

std::string check_attributes(pugi::xml_node node, const std::vector<Attribute>& required,
                             const std::vector<Attribute>& optional = {}) {
    for (const Attribute& attribute : required) {
        if (!node.attribute(attribute.name)) {
            return std::string(node.name()) + " has no " + attribute.name;
        }
    }
    std::vector<Attribute> all = required;
    all.insert(all.end(), optional.begin(), optional.end());
    for (const pugi::xml_attribute found : node.attributes()) {
        bool known = false;
        for (const Attribute& attribute : all) {
            if (std::strcmp(found.name(), attribute.name) == 0) {
                known = attribute.fits(found.value());
            }
        }
        if (!known) {
            return std::string(node.name()) + ": bad attribute " + found.name() + "=" +
                   found.value();
        }
    }
    return {};
}

std::string check_test_case(pugi::xml_node test) {
    std::string problem =
        check_attributes(test, {{"name", some}, {"classname", some}, {"time", decimal}});
    int results = 0;
    for (const pugi::xml_node child : test.children()) {
        ++results;
        const std::string name = child.name();
        if (name == "skipped") {
            problem += check_attributes(child, {});
        } else if (name == "failure" || name == "error") {
            problem += check_attributes(child, {{"type", some}}, {{"message", any}});
        } else {
            problem += "testcase holds " + name;
        }
    }
    return results > 1 ? "testcase has two results" : problem;
}

std::string check_properties(pugi::xml_node list) {
    std::string problem = check_attributes(list, {});
    for (const pugi::xml_node child : list.children()) {
        if (std::strcmp(child.name(), "property") != 0) {
            return "properties hold " + std::string(child.name());
        }
        problem += check_attributes(child, {{"name", some}, {"value", any}});
    }
    return problem;
}

std::string check_counts(pugi::xml_node suite) {
    unsigned tests = 0;
    unsigned failures = 0;
    unsigned errors = 0;
    unsigned skipped = 0;
    for (const pugi::xml_node test : suite.children("testcase")) {
        ++tests;
        failures += test.child("failure").empty() ? 0 : 1;
        skipped += test.child("skipped").empty() ? 0 : 1;
        errors += test.child("error").empty() ? 0 : 1;
    }
    const bool right = suite.attribute("tests").as_uint() == tests &&
                       suite.attribute("failures").as_uint() == failures &&
                       suite.attribute("errors").as_uint() == errors &&
                       suite.attribute("skipped").as_uint() == skipped;
    return right ? "" : "the counts of a testsuite are wrong";
}

// In this order: properties, any number of test cases, system-out, system-err.
std::string check_suite(pugi::xml_node suite) {
    std::string problem = check_attributes(suite,
                                           {{"name", some},
                                            {"package", any},
                                            {"id", whole},
                                            {"timestamp", date_time},
                                            {"hostname", some},
                                            {"tests", whole},
                                            {"failures", whole},
                                            {"errors", whole},
                                            {"time", decimal}},
                                           {{"skipped", whole}});
    constexpr std::array<const char*, 4> order{"properties", "testcase", "system-out",
                                               "system-err"};
    std::array<int, 4> counts{};
    std::size_t position = 0;
    for (const pugi::xml_node child : suite.children()) {
        while (position < order.size() && std::strcmp(child.name(), order.at(position)) != 0) {
            ++position;
        }
        if (position == order.size()) {
            return "testsuite: " + std::string(child.name()) + " is out of place";
        }
        ++counts.at(position);
        if (position == 0) {
            problem += check_properties(child);
        } else if (position == 1) {
            problem += check_test_case(child);
        }
    }
    if (counts[0] != 1 || counts[2] != 1 || counts[3] != 1) {
        return "testsuite misses or repeats an element";
    }
    return problem + check_counts(suite);
}

} // namespace

std::string junit_problem(const pugi::xml_document& document) {
    const pugi::xml_node suites = document.child("testsuites");
    if (suites.empty() || !suites.next_sibling().empty()) {
        return "the root is not one testsuites element";
    }
    std::string problem = check_attributes(suites, {});
    unsigned id = 0;
    for (const pugi::xml_node suite : suites.children()) {
        if (std::strcmp(suite.name(), "testsuite") != 0) {
            return "testsuites holds " + std::string(suite.name());
        }
        problem += check_suite(suite);
        problem += suite.attribute("id").as_uint() == id ? "" : "ids do not count from 0";
        ++id;
    }
    return problem;
}

} // namespace report_test

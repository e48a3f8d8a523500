// SPDX-License-Identifier: Apache-2.0
#include "writers/junit_suite.hpp"

#include <array>
#include <cmath>
#include <cstdio>

namespace wivex::report {

namespace {

std::string seconds_text(double seconds) {
    std::array<char, 48> text{};
    std::snprintf(text.data(), text.size(), "%.3f", std::isnan(seconds) ? 0.0 : seconds);
    return text.data();
}

} // namespace

JunitSuite::JunitSuite(pugi::xml_node parent, const std::string& name, std::size_t id,
                       const std::string& timestamp)
    : suite_(parent.append_child("testsuite")) {
    suite_.append_attribute("name") = name.c_str();
    suite_.append_attribute("package") = "wivex";
    suite_.append_attribute("id") = static_cast<unsigned>(id);
    suite_.append_attribute("timestamp") = timestamp.c_str();
    suite_.append_attribute("hostname") = "unknown";
    for (const char* count : {"tests", "failures", "errors", "skipped", "time"}) {
        suite_.append_attribute(count);
    }
    properties_ = suite_.append_child("properties");
}

void JunitSuite::property(const std::string& name, const std::string& value) {
    if (value.empty()) {
        return;
    }
    pugi::xml_node node = properties_.append_child("property");
    node.append_attribute("name") = name.c_str();
    node.append_attribute("value") = value.c_str();
}

pugi::xml_node JunitSuite::test(const std::string& name, const std::string& class_name,
                                double seconds) {
    ++tests_;
    seconds_ += std::isnan(seconds) ? 0.0 : seconds;
    pugi::xml_node node = suite_.append_child("testcase");
    node.append_attribute("name") = name.c_str();
    node.append_attribute("classname") = class_name.c_str();
    node.append_attribute("time") = seconds_text(seconds).c_str();
    return node;
}

void JunitSuite::describe(pugi::xml_node node, const JunitProblem& problem) {
    node.append_attribute("message") = problem.message.c_str();
    node.append_attribute("type") = std::string(problem.type).c_str();
    if (!problem.text.empty()) {
        node.text() = problem.text.c_str();
    }
}

void JunitSuite::fail(pugi::xml_node test, const JunitProblem& problem) {
    ++failures_;
    describe(test.append_child("failure"), problem);
}

void JunitSuite::error(pugi::xml_node test, const JunitProblem& problem) {
    ++errors_;
    describe(test.append_child("error"), problem);
}

void JunitSuite::skip(pugi::xml_node test) {
    ++skipped_;
    test.append_child("skipped");
}

void JunitSuite::finish(const std::string& notes) {
    suite_.append_child("system-out").text() = notes.c_str();
    suite_.append_child("system-err").text() = "";
    suite_.attribute("tests") = tests_;
    suite_.attribute("failures") = failures_;
    suite_.attribute("errors") = errors_;
    suite_.attribute("skipped") = skipped_;
    suite_.attribute("time") = seconds_text(seconds_).c_str();
}

} // namespace wivex::report

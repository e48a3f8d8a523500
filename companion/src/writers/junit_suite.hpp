// SPDX-License-Identifier: Apache-2.0
// One testsuite of junit.xml: keeps the order of its elements and its counts as the published
// schema wants them.
#pragma once

#include <pugixml.hpp>
#include <string>
#include <string_view>

namespace wivex::report {

struct JunitProblem {
    std::string_view type;
    std::string message;
    std::string text;
};

class JunitSuite {
public:
    /// `timestamp` is "YYYY-MM-DDThh:mm:ss".
    JunitSuite(pugi::xml_node parent, const std::string& name, std::size_t id,
               const std::string& timestamp);

    /// Leaves out an empty value. Only before the first test.
    void property(const std::string& name, const std::string& value);

    /// A test case that has passed until something else is said. `seconds` may be unknown.
    pugi::xml_node test(const std::string& name, const std::string& class_name, double seconds);

    void fail(pugi::xml_node test, const JunitProblem& problem);
    void error(pugi::xml_node test, const JunitProblem& problem);
    void skip(pugi::xml_node test);

    /// Writes the counts and the notes.
    void finish(const std::string& notes);

private:
    static void describe(pugi::xml_node node, const JunitProblem& problem);

    pugi::xml_node suite_;
    pugi::xml_node properties_;
    unsigned tests_ = 0;
    unsigned failures_ = 0;
    unsigned errors_ = 0;
    unsigned skipped_ = 0;
    double seconds_ = 0;
};

} // namespace wivex::report

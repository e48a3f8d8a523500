// SPDX-License-Identifier: Apache-2.0
// The structure of the commonly published JUnit schema, checked by hand: which elements stand
// where and in which order, which attributes they must have, and the form of their values.
#pragma once

#include <pugixml.hpp>
#include <string>

namespace report_test {

/// What breaks the schema first; empty when nothing does.
std::string junit_problem(const pugi::xml_document& document);

} // namespace report_test

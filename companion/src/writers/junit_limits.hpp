// SPDX-License-Identifier: Apache-2.0
// The limits in junit.xml: a test case each.
#pragma once

#include "model/limits.hpp"
#include "writers/junit_suite.hpp"

#include <string>
#include <vector>

namespace wivex::report {

/// A limit that is broken fails, one that is not known is an error.
void write_limits(JunitSuite& suite, const std::string& class_name,
                  const std::vector<LimitResult>& results);

} // namespace wivex::report

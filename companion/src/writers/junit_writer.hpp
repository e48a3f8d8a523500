// SPDX-License-Identifier: Apache-2.0
// junit.xml: a test case for every phase of every iteration, as CI servers and production lines
// read it. It is valid against the commonly published schema of the format.
#pragma once

#include "model/run.hpp"

#include <string>

namespace wivex::report {

std::string write_junit(const Log& log);

} // namespace wivex::report

// SPDX-License-Identifier: Apache-2.0
// The properties of junit.xml that say which device and which run it was.
#pragma once

#include "model/run.hpp"
#include "writers/junit_suite.hpp"

namespace wivex::report {

/// Leaves out what is not known.
void write_identity(JunitSuite& suite, const Log& log, const Run& run);

} // namespace wivex::report

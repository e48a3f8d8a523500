// SPDX-License-Identifier: Apache-2.0
// report.html: one page for people, complete in itself: no network, no font, no file beside it.
#pragma once

#include "model/run.hpp"

#include <string>

namespace wivex::report {

std::string write_html(const Log& log);

} // namespace wivex::report

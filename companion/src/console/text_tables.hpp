// SPDX-License-Identifier: Apache-2.0
// The tables that make up the console's texts.
#pragma once

#include "console/console_texts.hpp"

#include <span>

namespace wivex::report {

std::span<const TextRow> texts_of_runs();
std::span<const TextRow> texts_of_modes();

} // namespace wivex::report

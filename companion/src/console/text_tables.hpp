// SPDX-License-Identifier: Apache-2.0
// The tables that make up the console's texts, and short names for their columns.
#pragma once

#include "console/console_texts.hpp"

#include <span>

namespace wivex::report {

std::span<const TextRow> texts_of_runs();
std::span<const TextRow> texts_of_modes();

namespace columns {

constexpr auto whole = Shape::whole;
constexpr auto begins = Shape::begins;
constexpr auto open = Shape::open;
constexpr auto ends = Shape::ends;
constexpr auto inside = Shape::inside;

constexpr auto no_phase = Phase::none;
constexpr auto no_cause = Cause::none;

constexpr auto any_mode = Mode::unknown;
constexpr auto legacy = Mode::legacy;
constexpr auto device = Mode::device;
constexpr auto client = Mode::client;
constexpr auto go = Mode::go;
constexpr auto scan = Mode::scan;
constexpr auto softap = Mode::softap;

} // namespace columns

} // namespace wivex::report

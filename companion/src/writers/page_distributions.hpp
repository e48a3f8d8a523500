// SPDX-License-Identifier: Apache-2.0
// How figures are spread on the page: percentiles, histograms, the worst iterations and the console
// lines that show them.
#pragma once

#include "model/run.hpp"

#include <string>

namespace wivex::report {

/// Histogram and worst iterations of the throughput.
std::string throughput_distribution(const Run& run, const std::string& prefix);

/// The same of the signal of the access point under test, with its curve. Empty where no console
/// tells it.
std::string signal_card(const Run& run, const std::string& prefix);

/// The same of every phase and of whole iterations. Empty without times.
std::string times_card(const Run& run, const std::string& prefix);

/// The console lines of the worst iterations.
std::string worst_card(const Run& run, const std::string& prefix);

} // namespace wivex::report

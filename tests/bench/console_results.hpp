// SPDX-License-Identifier: Apache-2.0
// The result file of a run, told from its console alone.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace bench_test {

/// The result files that go with a console. There can be two, the one with all failures that are
/// shown first: of a run that was interrupted, the last iteration can have shown a failure that it
/// had not filed yet, because its session was still to be closed. `arguments` are those of the
/// tool.
std::vector<std::string> possible_result_files(std::string_view console,
                                               const std::vector<std::string>& arguments);

/// Whether an argument chooses this option.
bool chosen(const std::vector<std::string>& arguments, char option);

} // namespace bench_test

// SPDX-License-Identifier: Apache-2.0
// Real consoles with the result files that belong to them: the bench tests leave them here, and the
// test of false greens disturbs them.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace report_test {

struct Recording {
    std::string name;
    std::string console;
    /// Nothing when the run left none.
    std::optional<std::string> result_file;
};

/// Puts a recording into `folder`.
void keep(const std::string& folder, const Recording& recording);

/// All recordings of `folder`, by name.
std::vector<Recording> recordings_in(const std::string& folder);

} // namespace report_test

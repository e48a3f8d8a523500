// SPDX-License-Identifier: Apache-2.0
// The scenarios of the bench by their names, for suites that play each of them. Every test of such
// a suite is a process that asks for all names, so this does not ask the kernel what a path stands
// for.
#pragma once

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

namespace test_tools {

/// Those below `folder`, as "pass" or "scan/no-answer", sorted.
inline std::vector<std::string> scenario_names(const std::filesystem::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        std::filesystem::path path = entry.path();
        if (path.extension() == ".scenario") {
            names.push_back(path.replace_extension().lexically_relative(folder).string());
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace test_tools

// SPDX-License-Identifier: Apache-2.0
// Reading of JSON that may be hostile: size, depth and memory are bounded.
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

namespace wivex::line {

using Json = nlohmann::json;

constexpr std::size_t most_bytes = std::size_t{32} << 20U;
constexpr int most_depth = 16;

/// The document in `text` without the lists of single iterations, which can be long. When it is
/// none, a discarded value, and `problem` says why.
Json read_json(std::string_view text, std::string& problem);

} // namespace wivex::line

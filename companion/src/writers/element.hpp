// SPDX-License-Identifier: Apache-2.0
// An element of the page: it closes itself, and its attributes are escaped.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace wivex::report {

struct Attribute {
    Attribute(std::string_view its_name, std::string_view its_value)
        : name(its_name), value(its_value) {}

    std::string_view name;
    std::string value;
};

using Attributes = std::vector<Attribute>;

/// The element `name` around `markup`.
std::string element(std::string_view name, const Attributes& attributes, std::string_view markup);

/// The same without attributes.
std::string element(std::string_view name, std::string_view markup);

} // namespace wivex::report

// SPDX-License-Identifier: Apache-2.0
#include "diag/to_lower_copy.hpp"

#include <algorithm>
#include <cctype>

namespace wivex {

// The C library's reading of the current locale, which nothing changes. The equal `ctype` facet
// would bring all of the stream library into the static program.
std::string to_lower_copy(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    return text;
}

} // namespace wivex

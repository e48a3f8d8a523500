// SPDX-License-Identifier: Apache-2.0
#include "common/content_id.hpp"

#include "common/digest.hpp"

#include <algorithm>

namespace wivex::line {

std::string content_id(std::string_view bytes) {
    report::Digest digest;
    digest.add(bytes);
    return report::hexadecimal(digest.value());
}

bool is_content_id(std::string_view text) {
    return text.size() == 32 && std::ranges::all_of(text, [](char digit) {
               return (digit >= '0' && digit <= '9') || (digit >= 'a' && digit <= 'f');
           });
}

} // namespace wivex::line

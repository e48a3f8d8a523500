// SPDX-License-Identifier: Apache-2.0
#include "common/content_id.hpp"

#include <algorithm>
#include <boost/uuid/name_generator.hpp>
#include <boost/uuid/uuid.hpp>

namespace wivex::line {

namespace {

constexpr std::string_view digits = "0123456789abcdef";

} // namespace

std::string content_id(std::string_view bytes) {
    const boost::uuids::name_generator_sha1 named(boost::uuids::ns::oid());
    std::string text;
    for (const std::uint8_t byte : named(bytes.data(), bytes.size())) {
        text += digits[byte >> 4U];
        text += digits[byte & 15U];
    }
    return text;
}

bool is_content_id(std::string_view text) {
    return text.size() == 32 && std::ranges::all_of(text, [](char digit) {
               return digits.find(digit) != std::string_view::npos;
           });
}

} // namespace wivex::line

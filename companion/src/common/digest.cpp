// SPDX-License-Identifier: Apache-2.0
#include "common/digest.hpp"

// Compiled in: nothing to link with, and fast because it is inlined.
#define XXH_INLINE_ALL
#include <xxhash.h>

#include <algorithm>
#include <new>

namespace wivex::report {

namespace {

XXH3_state_t& state_in(std::byte* bytes) {
    return *std::launder(reinterpret_cast<XXH3_state_t*>(bytes));
}

const XXH3_state_t& state_in(const std::byte* bytes) {
    return *std::launder(reinterpret_cast<const XXH3_state_t*>(bytes));
}

} // namespace

Digest::Digest() {
    static_assert(sizeof(XXH3_state_t) <= state_size);
    static_assert(alignof(XXH3_state_t) <= state_alignment);
    XXH3_128bits_reset(::new (state_.data()) XXH3_state_t);
}

void Digest::add(std::string_view bytes) {
    XXH3_128bits_update(&state_in(state_.data()), bytes.data(), bytes.size());
}

DigestValue Digest::value() const {
    XXH128_canonical_t canonical;
    XXH128_canonicalFromHash(&canonical, XXH3_128bits_digest(&state_in(state_.data())));
    DigestValue value{};
    std::copy_n(std::begin(canonical.digest), value.size(), value.begin());
    return value;
}

std::string hexadecimal(const DigestValue& value) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    for (const std::uint8_t byte : value) {
        text += digits[byte >> 4U];
        text += digits[byte & 0x0FU];
    }
    return text;
}

} // namespace wivex::report

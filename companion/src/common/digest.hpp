// SPDX-License-Identifier: Apache-2.0
// A digest of 128 bits over bytes that come piece by piece. It tells things apart; it is no proof
// against somebody who wants two of them to look alike.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace wivex::report {

/// 16 bytes, the same on every machine.
using DigestValue = std::array<std::uint8_t, 16>;

class Digest {
public:
    Digest();

    void add(std::string_view bytes);

    /// Of all bytes so far; more may follow.
    DigestValue value() const;

private:
    /// What the library keeps between two pieces.
    static constexpr std::size_t state_size = 576;
    static constexpr std::size_t state_alignment = 64;
    alignas(state_alignment) std::array<std::byte, state_size> state_{};
};

/// 32 hexadecimal digits in lower case.
std::string hexadecimal(const DigestValue& value);

} // namespace wivex::report

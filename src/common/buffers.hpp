// SPDX-License-Identifier: Apache-2.0
// Sizes of the buffers through which all supplicant work passes.
#pragma once

#include <array>
#include <cstddef>

namespace wivex {

/// Supplicant replies and events are read into buffers of this many bytes.
inline constexpr std::size_t REPLY_BUFFER_SIZE = 1248;

/// Commands are formatted into buffers of this size; what does not fit is cut.
inline constexpr std::size_t command_buffer_size = 128;

using ReplyBuffer = std::array<char, REPLY_BUFFER_SIZE>;
using CommandBuffer = std::array<char, command_buffer_size>;

} // namespace wivex

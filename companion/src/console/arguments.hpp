// SPDX-License-Identifier: Apache-2.0
// What stands behind the tool's texts, taken apart: the one place that knows how the tool writes
// its ids, addresses and paths.
#pragma once

#include <string_view>
#include <utility>

namespace wivex::report {

/// "0cf3 and product id 9378": the two ids; empty ones when it is something else.
std::pair<std::string_view, std::string_view> chip_ids_in(std::string_view argument);

/// The kernel's and the chip's address of "02:..] curr_mac [02:..]".
std::pair<std::string_view, std::string_view> mac_pair_in(std::string_view argument);

/// The address at the start.
std::string_view mac_in(std::string_view argument);

/// The key of "key value = text".
std::string_view key_in(std::string_view argument);

/// The address of "192.168.49.40 obtained from ..."
std::string_view lease_in(std::string_view argument);

/// The path of a configuration file that could be read; empty when it could not.
std::string_view config_path_in(std::string_view argument);

/// Whether the announcement of a result file is whole: "PATH Updated".
bool says_updated(std::string_view argument);

/// The path of "PATH Updated", or of anything else as it stands.
std::string_view result_path_in(std::string_view argument);

/// Whether a Broadcom loopback left its status as it was sent: "ff<===".
bool is_untouched_status(std::string_view argument);

/// Whether a trace of a closed connection is that of a mode, not of the clean-up.
bool closed_by_mode(std::string_view argument);

} // namespace wivex::report

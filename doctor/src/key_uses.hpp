// SPDX-License-Identifier: Apache-2.0
// Which runs read a configuration key, and how.
#pragma once

#include "request.hpp"

#include <string_view>

namespace wivex::doctor {

enum class KeyKind {
    /// Shows in texts only.
    shown,
    /// Chooses or names the list of the bus.
    device_list,
    /// Part of the path of the interface's flags.
    interface,
    /// Part of the path of the supplicant's socket.
    control_folder,
    network_name,
    pass_phrase,
    peer_address,
    intent,
    /// A word of a shell command line, where blanks do no harm.
    shell_argument,
    /// Written directly in front of a program's name.
    program_folder,
    yes_or_no,
    number
};

struct KeyUse {
    std::string_view key;
    /// Letters of the options that read it; "*" for every run.
    std::string_view readers;
    KeyKind kind;
};

/// How the key is used; null when no mode reads it.
const KeyUse* find_key_use(std::string_view key);

/// Whether this run reads the key.
bool is_read(const KeyUse& use, const RunPlan& plan);

/// The known key that is most like `key`; empty when none is.
std::string_view nearest_key(std::string_view key);

} // namespace wivex::doctor

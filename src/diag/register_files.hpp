// SPDX-License-Identifier: Apache-2.0
// Target registers of the ath6kl driver, through its files in debugfs and shell commands.
//
// Writing an address to "reg_addr" selects a register; reading "reg_dump" yields a line such as
// "0x28000: 0x33221100". Both stand in the "ath6kl" directory of the phy directory.
#pragma once

#include <array>
#include <string>
#include <string_view>

namespace wivex {

/// Where debugfs shows a directory for each wireless phy.
inline constexpr const char* phy_root = "/sys/kernel/debug/ieee80211";

/// Name of a phy directory, zero-filled by the caller. A longer name is cut.
using PhyName = std::array<char, 128>;

/// Copies the name of the first phy directory to `out`: the first name with "phy" anywhere in it,
/// in directory order. Returns false after a message when there is none.
bool find_phy_name(PhyName& out);

/// Shell commands and paths of the register files are built in buffers of 128 bytes: returns the
/// part of `text` that fits.
std::string fit_command(std::string text);

/// One dump as it was read.
struct RegisterDump {
    /// The first line, cut behind 20 characters.
    std::string line;
    /// Characters that came back for it, or -1 when the file cannot be read.
    int length = 0;

    /// A dump counts only when its line has exactly 19 characters; the last eight are the word.
    bool complete() const;
    std::string_view word() const;
};

/// Takes the first line from the first bytes of a dump.
RegisterDump parse_register_dump(std::string_view text);

/// Reads the firmware's hardware address from the target. Returns 1 and the 17 characters of the
/// address in `out`, with digits in the case of the driver; or 0 after a message.
int read_fw_mac_ath6kl(std::string& out);

} // namespace wivex

// SPDX-License-Identifier: Apache-2.0
// What a caller says of the device under test, checked: on the command line, and as key=value lines
// of a file. What could not be shown as it stands is refused, not repaired.
#pragma once

#include "model/identity.hpp"

#include <string>
#include <string_view>

namespace wivex::report {

/// Sets the member `key` ("serial", "part", "station", "attempt", "operator", or "fact", whose
/// value is KEY=VALUE). Returns what is wrong, or nothing; a member that is set already is wrong.
std::string set_member(Identity& identity, std::string_view key, std::string_view value);

/// Reads key=value lines; "#" begins a comment line, blanks around key and value do not count.
/// Returns what is wrong and in which line, or nothing.
std::string read_identity(std::string_view text, Identity& identity);

/// The same from a file.
std::string read_identity_file(const std::string& path, Identity& identity);

/// `under`, with everything that `over` knows put over it.
Identity overlaid(Identity under, const Identity& over);

} // namespace wivex::report

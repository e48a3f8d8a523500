// SPDX-License-Identifier: Apache-2.0
// The command line: options into `run_options` and `compare_previous`.
#pragma once

namespace wivex {

// Kept letter by letter: each '?' makes -? an option of its own, C and s take an argument but have
// no handler, and all of them end in the usage text.
inline constexpr const char* option_letters = "Agu?o:?m:?s:C:?i:lMdwcS::?v?h?F::R::D::";

/// Parses the options. Returns 1 to run, 0 to stop at once (help, version, no mode, unknown
/// option); whatever there is to say has been printed then.
int parse_command_line(int argc, char* argv[]);

/// Prints the usage text to standard output.
void print_usage();

} // namespace wivex

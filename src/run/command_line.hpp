// SPDX-License-Identifier: Apache-2.0
// The command line: options into `run_options` and `compare_previous`.
#pragma once

namespace wivex {

/// The options, as the C library's getopt takes them.
extern const char* const option_letters;

/// Parses the options. Returns 1 to run, 0 to stop at once (help, version, no mode, unknown
/// option); whatever there is to say has been printed then.
int parse_command_line(int argc, char* argv[]);

/// Prints the usage text to standard output.
void print_usage();

} // namespace wivex

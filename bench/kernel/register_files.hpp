// SPDX-License-Identifier: Apache-2.0
// The register files of the simulated chip in a private debugfs tree.
#pragma once

#include "language/chip_script.hpp"

#include <string>

namespace bench {

/// Creates the files "aow", "reg_addr" and "reg_dump" of the phy. They are pipes, so that a write
/// is seen and a read is answered by the register that was selected last. Throws std::system_error.
void build_register_files(const ChipScript& script);

/// Serves the files for ever, and appends each write and each read to the log at `log_path`.
[[noreturn]] void serve_register_files(const ChipScript& script, const std::string& log_path);

} // namespace bench

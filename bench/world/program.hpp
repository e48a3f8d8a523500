// SPDX-License-Identifier: Apache-2.0
// The program that takes this process over.
#pragma once

#include <string>
#include <vector>

namespace bench {

/// Becomes the program of the first word, found by PATH, with all words as its arguments. Returns
/// only when that fails, with errno set.
void become_program(std::vector<std::string> words);

} // namespace bench

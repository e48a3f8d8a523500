// SPDX-License-Identifier: Apache-2.0
#include "world/program.hpp"

#include <unistd.h>

namespace bench {

void become_program(std::vector<std::string> words) {
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string& word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);
    execvp(arguments[0], arguments.data());
}

} // namespace bench

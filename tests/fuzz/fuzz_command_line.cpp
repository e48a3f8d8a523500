// The command line: arguments are separated by zero bytes.

#include "common/process_state.hpp"
#include "driver/command_line.hpp"

#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    // The prompt for a configuration file reads the end of an empty input.
    return std::freopen("/dev/null", "r", stdin) == nullptr ? -1 : 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::vector<std::string> words{"wivex", ""};
    for (std::size_t index = 0; index < size; ++index) {
        if (data[index] == 0) {
            words.emplace_back();
        } else {
            words.back().push_back(static_cast<char>(data[index]));
        }
    }
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string& word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);
    optind = 0;
    wivex::run_options = wivex::RunOptions{};
    wivex::parse_command_line(static_cast<int>(words.size()), arguments.data());
    return 0;
}

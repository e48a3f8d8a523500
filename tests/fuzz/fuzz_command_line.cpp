// SPDX-License-Identifier: Apache-2.0
// The command line: arguments are separated by zero bytes. A run that is let in has a mode and at
// least one iteration.

#include "common/process_state.hpp"
#include "require.hpp"
#include "run/command_line.hpp"

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
    const int result = wivex::parse_command_line(static_cast<int>(words.size()), arguments.data());
    fuzz::require(result == 0 || result == 1);
    const wivex::RunOptions& run = wivex::run_options;
    const int modes = run.loopback_mode + run.mac_mode + run.scan_mode + run.p2p_device_mode +
                      run.go_mode + run.wlan_legacy_mode + run.p2p_client_mode + run.softap_mode;
    fuzz::require(result == 0 || (run.iteration_count >= 1 && modes >= 1));
    // The prefix is one of the arguments, as it stands there.
    fuzz::require(run.scan_ssid == nullptr || run.scan_mode == 1);
    return 0;
}

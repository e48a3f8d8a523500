// SPDX-License-Identifier: Apache-2.0
#include "kernel/chip.hpp"

#include "kernel/diag_device.hpp"
#include "kernel/register_files.hpp"

#include <signal.h>
#include <unistd.h>

#include <exception>

namespace bench {

bool start_chip(const ChipScript& script, const std::string& log_path, std::string& problem) {
    try {
        if (!script.words.empty()) {
            add_diag_device(script);
        }
        if (script.phy.empty()) {
            return true;
        }
        build_register_files(script);
        if (fork() == 0) {
            signal(SIGPIPE, SIG_IGN);
            serve_register_files(script, log_path);
        }
        return true;
    } catch (const std::exception& failure) {
        problem = failure.what();
        return false;
    }
}

} // namespace bench

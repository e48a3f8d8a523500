// SPDX-License-Identifier: Apache-2.0
// What the doctor is asked: the options of the run that is meant, and its own.
#pragma once

#include <string>

namespace wivex::doctor {

/// What a run with these options does in an iteration.
struct RunPlan {
    bool mac = false;
    bool loopback = false;
    bool softap = false;
    /// The letter of the one mode that runs; 0 for none.
    char mode = 0;

    bool uses_supplicant() const {
        return mode == 'w' || mode == 'd' || mode == 'g' || mode == 'c';
    }
    bool forms_group() const {
        return mode == 'd' || mode == 'g' || mode == 'c';
    }
    /// It may have to serve addresses.
    bool may_own_group() const {
        return mode == 'd' || mode == 'g';
    }
};

struct Request {
    enum class Wish { check, help, version, refuse };

    Wish wish = Wish::check;
    bool json = false;
    bool quiet = false;
    bool scan = false;
    /// The options of the run as they were given, one blank between two.
    std::string run_options;
    RunPlan plan;
};

/// Takes the doctor's own options out of the command line and hands the rest to the tool's parser,
/// which fills `run_options`. What is wrong has been said on standard error.
Request parse_request(int argc, char* argv[]);

} // namespace wivex::doctor

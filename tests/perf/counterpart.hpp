// SPDX-License-Identifier: Apache-2.0
// The other end of a control socket, in a process of its own: answers each command, and sends
// events when it is told to.
#pragma once

#include "ctrl/supplicant_session.hpp"
#include "temporary_folder.hpp"

#include <sys/types.h>

#include <string>

namespace perf {

/// A process that serves the control socket "wlan0" in a folder. It answers
/// "OK\n" to everything, with two exceptions: "EVENT n" also makes it send n events to the attached
/// connection, a few milliseconds later when n is 1; "DELAY" is answered with the microseconds that
/// have passed since the last event was sent.
class Counterpart {
public:
    explicit Counterpart(const std::string& folder);
    Counterpart(const Counterpart&) = delete;
    Counterpart& operator=(const Counterpart&) = delete;
    ~Counterpart();

private:
    pid_t process_ = -1;
};

/// A session of the tool with a counterpart of its own. Ends the program when it cannot be opened.
class MeasuredSession {
public:
    MeasuredSession();

    wivex::SupplicantSession& get() {
        return session_;
    }

private:
    test_tools::TemporaryFolder folder_{"wivex-perf"};
    Counterpart counterpart_{folder_.path()};
    wivex::SupplicantSession session_;
};

} // namespace perf

// SPDX-License-Identifier: Apache-2.0
// The other end of a control socket, in a process of its own: answers each command, and sends
// events when it is told to.
#pragma once

#include "ctrl/supplicant_session.hpp"

#include <sys/types.h>

#include <functional>
#include <string>

namespace perf {

/// A folder with the control socket "wlan0" in it and a process that serves it. The process answers
/// "OK\n" to everything, with two exceptions: "EVENT n" also makes it send n events to the attached
/// connection, a few milliseconds later when n is 1; "DELAY" is answered with the microseconds that
/// have passed since the last event was sent.
class Counterpart {
public:
    Counterpart();
    ~Counterpart();
    Counterpart(const Counterpart&) = delete;
    Counterpart& operator=(const Counterpart&) = delete;

    /// The folder, for `ctrl_iface`.
    const std::string& folder() const {
        return folder_;
    }

private:
    std::string folder_;
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
    Counterpart counterpart_;
    wivex::SupplicantSession session_;
};

} // namespace perf

// SPDX-License-Identifier: Apache-2.0
// The one conversation that a mode holds with the supplicant: a command connection whose replies
// are judged, and an attached event connection whose messages are matched.
//
// The two connections are process-wide handles (the termination handler closes them), so there is
// only ever one live session in a process.
#pragma once

#include "common/reply.hpp"
#include "common/run_config.hpp"

#include <span>
#include <string>
#include <string_view>

namespace wivex {

/// Judges an event message against an argument text (or null); non-zero means that it matches.
using EventMatcher = int (*)(const char* message, const char* argument);

class SupplicantSession {
public:
    /// Opens the session; ask `isInvalid` for the outcome.
    explicit SupplicantSession(const RunConfig& config);
    ~SupplicantSession();
    SupplicantSession(const SupplicantSession&) = delete;
    SupplicantSession& operator=(const SupplicantSession&) = delete;

    /// Removes stale client sockets from /tmp, then connects and attaches unless the session is
    /// already open. Takes a second. Returns true when the session is open.
    bool open(const RunConfig& config);

    void close();

    bool isInvalid() const {
        return !open_;
    }

    /// Sends `command` and ends `reply` behind what came back, or at its capacity when nothing did.
    /// Returns false when there is no reply or it contains "FAIL" or "UNKNOWN COMMAND" anywhere.
    bool sendCommand(std::string_view command, Reply& reply);

    /// Reads queued messages until one contains `event`; those before it are lost. Never waits.
    /// Returns 0 when none does, else 1 or what `matcher` says of the message and `argument`.
    int waitForEvent(const char* event, EventMatcher matcher = nullptr,
                     const char* argument = nullptr);

    /// Like `waitForEvent`; returns the index of the first candidate that `matcher` accepts for the
    /// message, or -1.
    int waitForEventAny(const char* event, EventMatcher matcher,
                        std::span<const char* const> candidates);

    /// Sleeps until a message can be read or the wall clock shows its next second.
    void waitForMessage();

    /// One-shot "STATUS" of the interface wlan0 or p2p0 on a connection of its own. The reply is
    /// printed and ended as in `sendCommand`. Returns true when the supplicant answered well.
    bool checkWlanStatus(const RunConfig& config, Reply& reply);
    bool checkP2pStatus(const RunConfig& config, Reply& reply);

    /// The last command that was accepted. Part of the interface; nothing here asks for it.
    const std::string& lastCommand() const {
        return last_command_;
    }

private:
    bool open_ = false;
    std::string last_command_;
};

} // namespace wivex

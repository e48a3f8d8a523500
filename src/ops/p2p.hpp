// SPDX-License-Identifier: Apache-2.0
// Wi-Fi Direct operations: each sends one P2P command to the supplicant and judges its reply.
//
// Every operation prints a line about its outcome to standard output and returns 0, or -1
// on failure; without an open session it returns -1 and prints nothing. The two styles of these
// lines, with their blanks and missing newlines, are kept to the letter.
#pragma once

#include "common/error_code.hpp"
#include "common/reply.hpp"
#include "ctrl/supplicant_session.hpp"

#include <string>

namespace wivex {

/// Matches an event message in which `peer` occurs, the first character of each line left out.
/// Returns 1 for a match, else 0; a null `peer` never matches.
int parseP2pEvent(const char* message, const char* peer);

int p2pFlush(SupplicantSession& session, Reply reply);

/// Begins a search and waits up to 60 seconds until `peer` is found.
int p2pFind(SupplicantSession& session, Reply reply, const char* peer);

/// Part of the interface; no mode calls it, nor the three that add a group below.
int p2pStopFind(SupplicantSession& session, Reply reply);

/// Joins the persistent group of `peer` by `method` (for example "pbc").
int p2pConnectJoin(SupplicantSession& session, const char* peer, const char* method, Reply reply);

/// Negotiates a group with `peer` by push button. `method` is accepted and ignored.
int p2pConnectPbc(SupplicantSession& session, const char* peer, const char* method,
                  const std::string& go_intent, Reply reply);

int p2pGroupAdd(SupplicantSession& session, Reply reply);

/// Starts a group with the given SSID and pass phrase, on `frequency` (in MHz) in the second form.
int p2pGroupAddSecured(SupplicantSession& session, const std::string& ssid,
                       const std::string& passphrase, Reply reply);
int p2pGroupAddOnChannel(SupplicantSession& session, const std::string& ssid,
                         const std::string& passphrase, int frequency, Reply reply);

int p2pGroupRemove(SupplicantSession& session, const std::string& interface, Reply reply);

/// Flushes and searches without a peer, so that the search ends by its time-out. Returns 0 or 26.
ErrorCode search_device_P2P(SupplicantSession& session);

/// Searches once more, as `search_device_P2P` does; no stop command is sent. Returns 0 or 26.
ErrorCode stop_search_device_P2P(SupplicantSession& session);

/// Flushes and listens. Returns 0, 28, or -1 without an open session.
ErrorCode listen_device_P2P(SupplicantSession& session);

} // namespace wivex

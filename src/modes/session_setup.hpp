// SPDX-License-Identifier: Apache-2.0
// How every scripted mode makes sure of its supplicant session.
#pragma once

#include "common/run_config.hpp"
#include "ctrl/supplicant_session.hpp"

namespace wivex {

/// True when the session that was just created is open; otherwise says so on standard error.
bool session_created(const SupplicantSession& session);

/// True when the configuration names a peer; otherwise says so on standard error.
bool peer_configured(const RunConfig& config);

/// True when the session is open. A closed one is opened once more; when that fails too, the
/// operator is told on standard output.
bool session_open_or_reopened(SupplicantSession& session, const RunConfig& config);

} // namespace wivex

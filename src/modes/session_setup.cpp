// SPDX-License-Identifier: Apache-2.0
#include "modes/session_setup.hpp"

#include "common/console.hpp"

namespace wivex {

bool session_created(const SupplicantSession& session) {
    if (session.isInvalid()) {
        print_err("unable to open sockets\n");
        return false;
    }
    return true;
}

bool peer_configured(const RunConfig& config) {
    if (config.p2p_target_device_mac.empty()) {
        print_err("error in config file: missing target mac address\n");
        return false;
    }
    return true;
}

bool session_open_or_reopened(SupplicantSession& session, const RunConfig& config) {
    if (!session.isInvalid()) {
        return true;
    }
    print_out("Invalid sockets..Trying to open them again.\n");
    if (session.open(config)) {
        return true;
    }
    print_out("Unable to open sockets..quitting\n");
    return false;
}

} // namespace wivex

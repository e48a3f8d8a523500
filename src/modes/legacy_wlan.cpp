// SPDX-License-Identifier: Apache-2.0
#include "modes/legacy_wlan.hpp"

#include "common/console.hpp"
#include "common/process_state.hpp"
#include "common/waiting.hpp"
#include "ctrl/supplicant_session.hpp"
#include "modes/addressing.hpp"
#include "modes/session_setup.hpp"
#include "modes/traffic.hpp"
#include "ops/station.hpp"

namespace wivex {

namespace {

ErrorCode scan(SupplicantSession& session) {
    const ErrorCode result = cmd_to_scan(session);
    if (result == error_code::passed) {
        print_out("Scan Command Sent Successfully...\n");
        return error_code::passed;
    }
    print_out("Fail to send Scan Command!!!\n");
    if (result == error_code::scan_busy) {
        print_out("ERROR:SCAN FAIL-BUSY\n");
        return error_code::scan_busy;
    }
    if (result == error_code::scan_rejected) {
        print_out("ERROR:SCAN-FAIL\n");
        return error_code::scan_rejected;
    }
    // Only the two known codes end the mode: kept.
    return error_code::passed;
}

ErrorCode find_network(SupplicantSession& session, RunConfig& config) {
    if (cmd_to_find_network(session, config) != 0) {
        print_out("Fail to send Scan_Results Command!!!\n");
        return error_code::network_not_found;
    }
    print_out("Scan_Results Command Sent Successfully...\n");
    return error_code::passed;
}

ErrorCode add_network(SupplicantSession& session, int& id) {
    id = cmd_to_addnetwork(session);
    // A real network id of 18 is taken for the failure code: the two share one number.
    if (id >= 0 && id != error_code::add_network_failed) {
        print_out("Call to ADD_NETWORK is Successful...\n");
        return error_code::passed;
    }
    if (run_options.debug != 0) {
        print_out("Fail to send Command ADD_NETWORK!!!\n\n");
    }
    if (id == error_code::add_network_failed) {
        print_out("ERROR:ADD_NETWORK COMMAND FAILED\n");
        return error_code::network_not_added;
    }
    // Any other negative result goes on as the network id.
    return error_code::passed;
}

ErrorCode set_network(SupplicantSession& session, const RunConfig& config, int id) {
    const ErrorCode result = cmd_to_setnetwork(session, config, id);
    print_out("Result of cmd_to_setnetwork function is %d\n", result);
    if (result == error_code::set_network_failed) {
        print_out("ERROR:SET_NETWORK COMMAND FAILED\n");
        return error_code::set_network_failed;
    }
    return error_code::passed;
}

ErrorCode select_network(SupplicantSession& session, int id) {
    const ErrorCode result = cmd_to_selectnetwork(session, id);
    if (result == error_code::passed) {
        print_out("Call to SELECT_NETWORK is Successful...\n");
        return error_code::passed;
    }
    print_out("Fail to send Command SELECT_NETWORK !!!\n");
    if (result == error_code::select_network_failed) {
        print_out("ERROR:SELECT_NETWORK COMMAND FAILED\n");
        // 19 and not 20: kept. The counts of the result file depend on it.
        return error_code::network_not_selected;
    }
    return error_code::passed;
}

// A DHCP failure is printed and ends nothing: kept.
void try_to_take_address(const RunConfig& config) {
    if (take_address(config) == error_code::dhcp_client_failed) {
        print_out("ERROR:UDHCHPC START FAILED\n");
    }
}

ErrorCode disable_network(SupplicantSession& session, int id) {
    if (cmd_to_disablenetwork(session, id) != error_code::passed) {
        print_err("Fail to send command DISABLE_NETWORK!!!\n");
        return error_code::disable_network_failed;
    }
    print_out("Call to DISABLE_NETWORK is successful...\n");
    return error_code::passed;
}

ErrorCode associate(SupplicantSession& session, RunConfig& config, int& id) {
    if (const ErrorCode failure = scan(session)) {
        return failure;
    }
    if (const ErrorCode failure = find_network(session, config)) {
        return failure;
    }
    if (const ErrorCode failure = add_network(session, id)) {
        return failure;
    }
    if (const ErrorCode failure = set_network(session, config, id)) {
        return failure;
    }
    return select_network(session, id);
}

} // namespace

ErrorCode legacy_wlan_test(RunConfig& config) {
    SupplicantSession session(config);
    if (!session_created(session) || !session_open_or_reopened(session, config)) {
        return error_code::session_not_open;
    }
    int id = 0;
    if (const ErrorCode failure = associate(session, config, id)) {
        return failure;
    }
    try_to_take_address(config);
    if (const ErrorCode failure = measure_traffic(config)) {
        return failure;
    }
    if (const ErrorCode failure = disable_network(session, id)) {
        return failure;
    }
    wait_for(run_options.iteration_interval);
    return error_code::passed;
}

} // namespace wivex

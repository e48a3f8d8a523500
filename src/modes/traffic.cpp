// SPDX-License-Identifier: Apache-2.0
#include "modes/traffic.hpp"

#include "common/console.hpp"
#include "ops/host_tools.hpp"

namespace wivex {

ErrorCode measure_traffic(const RunConfig& config) {
    if (config.check_iperf.empty() || config.check_iperf == "no") {
        print_out("IPERF not set in conf. file!!\n");
        return error_code::passed;
    }
    if (!cmd_to_run_iperf_client(config)) {
        print_err("Unable to run Iperf in Client mode!!!\n");
        return error_code::iperf_client_failed;
    }
    print_err("Run Iperf Successful...\n");
    return error_code::passed;
}

} // namespace wivex

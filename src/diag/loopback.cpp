// SPDX-License-Identifier: Apache-2.0
#include "diag/loopback.hpp"

#include "common/console.hpp"
#include "common/process_state.hpp"
#include "diag/chip_family.hpp"
#include "diag/to_lower_copy.hpp"

#include <unistd.h>

namespace wivex {

namespace {

void print_ids(const RunConfig& config, const std::string& vendor_id) {
    print_out("[WIFI]VID %s\n", vendor_id.c_str());
    print_out("[WIFI]Actual PID %s\n", config.product_id.c_str());
    print_out("[WIFI]PIDs:\n");
    for (const std::string& product_id : config.product_ids) {
        print_out("%s\n", product_id.c_str());
    }
}

} // namespace

int loopback_test(const RunConfig& config) {
    const std::string vendor_id = to_lower_copy(config.vendor_id);
    const std::string product_id = to_lower_copy(config.product_id);
    // The flows run wherever the process is, so a failure does not matter.
    [[maybe_unused]] const int changed = chdir(config.driver_path.c_str());
    if (run_options.debug != 0) {
        print_ids(config, vendor_id);
    }
    if (const auto loopback = chip_family().loopback; loopback != nullptr) {
        return loopback(config);
    }
    print_err("[WIFI]Current module : vid = %s,pid = %s\n", vendor_id.c_str(), product_id.c_str());
    print_out("[WIFI]LOOPBACK is not supported for this chip\n");
    return 0;
}

} // namespace wivex

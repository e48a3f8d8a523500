#include "diag/loopback.hpp"

#include "common/console.hpp"
#include "common/process_state.hpp"
#include "diag/loopback_ath6kl.hpp"
#include "diag/loopback_broadcom.hpp"
#include "diag/loopback_qca_combo.hpp"
#include "diag/to_lower_copy.hpp"

#include <unistd.h>

#include <array>

namespace wivex {

namespace {

struct LoopbackFlow {
    int chip_type;
    int (*run)(const RunConfig& config);
};

/// A further chip family is a row here and a file of its own.
constexpr std::array<LoopbackFlow, 4> flows{{
    {1, loopback_ath6kl},
    {2, loopback_qca_combo},
    {3, loopback_broadcom},
    {5, loopback_broadcom},
}};

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
    for (const LoopbackFlow& flow : flows) {
        if (flow.chip_type == run_options.chip_type) {
            return flow.run(config);
        }
    }
    print_err("[WIFI]Current module : vid = %s,pid = %s\n", vendor_id.c_str(), product_id.c_str());
    print_out("[WIFI]LOOPBACK is not supported for this chip\n");
    return 0;
}

} // namespace wivex

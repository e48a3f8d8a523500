// SPDX-License-Identifier: Apache-2.0
#include "diag/chip_family.hpp"

#include "common/console.hpp"
#include "common/process_state.hpp"
#include "diag/chip_mac_address.hpp"
#include "diag/loopback_ath6kl.hpp"
#include "diag/loopback_broadcom.hpp"
#include "diag/loopback_qca_combo.hpp"

#include <algorithm>
#include <array>

namespace wivex {

namespace {

void tell_that_nothing_is_to_undo() {
    print_out("[WIFI]WiFi Vendor is QCA 11n. Nothing to do.\n");
}

constexpr auto families = std::to_array<ChipFamilyRow>({
    {ChipFamily::ath6kl, loopback_ath6kl, read_qca_mac, tell_that_nothing_is_to_undo},
    {ChipFamily::qca_combo, loopback_qca_combo, read_qca_mac, tell_that_nothing_is_to_undo},
    {ChipFamily::broadcom, loopback_broadcom, read_broadcom_mac, leave_broadcom_loopback},
    {ChipFamily::none, nullptr, nullptr, nullptr},
});

} // namespace

const ChipFamilyRow& chip_family() {
    const ChipFamily family = family_of(run_options.chip_type);
    return *std::find_if(families.begin(), families.end(),
                         [family](const ChipFamilyRow& row) { return row.family == family; });
}

} // namespace wivex

// SPDX-License-Identifier: Apache-2.0
#include "reader/seen_macs.hpp"

#include <algorithm>

namespace wivex::report {

namespace {

constexpr std::size_t most_listed = 8;

void keep(std::vector<std::string>& list, const std::string& mac) {
    if (!mac.empty() && list.size() < most_listed && std::ranges::count(list, mac) == 0) {
        list.push_back(mac);
    }
}

} // namespace

void see_kernel_mac(SeenMacs& macs, std::string_view kernel) {
    keep(macs.kernel, mac_address(kernel));
}

void see_chip_mac(SeenMacs& macs, std::string_view chip, std::string_view kernel) {
    const std::string of_chip = mac_address(chip);
    const std::string of_kernel = mac_address(kernel);
    keep(macs.chip, of_chip);
    if (!of_chip.empty() && !of_kernel.empty() && of_chip != of_kernel &&
        macs.differing_kernel.empty()) {
        macs.differing_kernel = of_kernel;
        macs.differing_chip = of_chip;
    }
}

} // namespace wivex::report

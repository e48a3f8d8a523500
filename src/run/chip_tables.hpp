// SPDX-License-Identifier: Apache-2.0
// Vendor id and product ids of the known modules, by bus and chip vendor.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace wivex {

/// Four characters and a terminating zero.
using VendorId = std::array<char, 5>;

/// "USB" or "usb" gives 0, "PCIE" or "pcie" 1, anything else 2.
int device_type_code(std::string_view text);

/// "QCA" gives 0, "BRCM" 1, "BRCM16" 2, "Ralink" 3, "MTK" 4, anything else 5.
int vendor_code(std::string_view text);

/// Looks the pair of codes up. Returns 1 when it is known: `vendor_out` then holds the vendor id,
/// and the product ids have been appended to `product_ids`. Returns 0 otherwise, also for a null
/// `vendor_out`.
int push_chip_ids(int device_type_code, int vendor_code, VendorId* vendor_out,
                  std::vector<std::string>& product_ids);

} // namespace wivex

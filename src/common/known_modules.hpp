// SPDX-License-Identifier: Apache-2.0
// The modules that the tool knows, and the chip family that each belongs to.
#pragma once

#include <array>
#include <cstdint>

namespace wivex {

/// Chips that are driven in the same way. What differs between families stands in
/// `diag/chip_family.cpp`, a row each.
enum class ChipFamily {
    /// No known module, or a chip that answers no request.
    none,
    ath6kl,
    qca_combo,
    broadcom,
};

struct KnownModule {
    /// The number under which the console shows it.
    std::int32_t chip_type;
    /// As the kernel's list of USB devices names it.
    const char* listed_as;
    const char* product_id;
    ChipFamily family;
};

/// In the order in which each line of the list is searched.
inline constexpr std::array<KnownModule, 5> known_modules{{
    {1, "Vendor=0cf3 ProdID=1022", "1022", ChipFamily::ath6kl},
    {2, "Vendor=0cf3 ProdID=9378", "9378", ChipFamily::qca_combo},
    {3, "Vendor=0a5c ProdID=bd27", "bd27", ChipFamily::broadcom},
    {4, "Vendor=0a5c ProdID=bd1d", "bd1d", ChipFamily::none},
    {5, "Vendor=9e0c ProdID=20a0", "20a0", ChipFamily::broadcom},
}};

constexpr ChipFamily family_of(std::int32_t chip_type) {
    for (const KnownModule& module : known_modules) {
        if (module.chip_type == chip_type) {
            return module.family;
        }
    }
    return ChipFamily::none;
}

} // namespace wivex

// SPDX-License-Identifier: Apache-2.0
#include "run/chip_tables.hpp"

#include "common/console.hpp"
#include "common/process_state.hpp"

#include <algorithm>
#include <array>
#include <initializer_list>

namespace wivex {

namespace {

enum DeviceType : int { usb = 0, pcie = 1, other_bus = 2 };
enum Vendor : int { qca = 0, brcm = 1, brcm16 = 2, ralink = 3, mtk = 4, other_vendor = 5 };

struct Chip {
    DeviceType device_type;
    Vendor vendor;
    VendorId vendor_id;
    std::array<const char*, 2> product_ids;
};

constexpr auto chips = std::to_array<Chip>({
    {usb, qca, {"0cf3"}, {"1022", "9378"}},
    {usb, brcm, {"0a5c"}, {"bd27", "bd1d"}},
    {usb, brcm16, {"9e0c"}, {"20a0", nullptr}},
    {usb, ralink, {"148f"}, {"3572", nullptr}},
    // Placeholders: kept.
    {usb, mtk, {"abcd"}, {"0000", nullptr}},
    {pcie, brcm, {"14e4"}, {"aa31", nullptr}},
});

} // namespace

int device_type_code(std::string_view text) {
    if (text == "USB" || text == "usb") {
        return usb;
    }
    return text == "PCIE" || text == "pcie" ? pcie : other_bus;
}

int vendor_code(std::string_view text) {
    struct Name {
        std::string_view text;
        Vendor vendor;
    };
    for (const Name& name : std::initializer_list<Name>{
             {"QCA", qca}, {"BRCM", brcm}, {"BRCM16", brcm16}, {"Ralink", ralink}, {"MTK", mtk}}) {
        if (name.text == text) {
            return name.vendor;
        }
    }
    return other_vendor;
}

int push_chip_ids(int device_type_code, int vendor_code, VendorId* vendor_out,
                  std::vector<std::string>& product_ids) {
    if (run_options.debug != 0) {
        print_out("[WIFI]Pushing PIDs\n");
    }
    const auto* const chip = std::find_if(chips.begin(), chips.end(), [&](const Chip& known) {
        return known.device_type == device_type_code && known.vendor == vendor_code;
    });
    if (chip == chips.end() || vendor_out == nullptr) {
        return 0;
    }
    *vendor_out = chip->vendor_id;
    for (const char* product_id : chip->product_ids) {
        if (product_id != nullptr) {
            product_ids.emplace_back(product_id);
        }
    }
    return 1;
}

} // namespace wivex

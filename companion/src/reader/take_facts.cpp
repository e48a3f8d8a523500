// SPDX-License-Identifier: Apache-2.0
// What the console says of the device and its configuration.
#include "common/printable.hpp"
#include "reader/seen_macs.hpp"
#include "reader/take.hpp"

namespace wivex::report {

namespace {

constexpr std::size_t most_unknown_keys = 32;
constexpr std::size_t longest_id = 40;
constexpr std::size_t longest_mac = 20;

class FactTaker {
public:
    explicit FactTaker(LogBuilder& builder)
        : run_(*builder.run()), device_(run_.device), macs_(builder.macs()) {}

    void operator()(const SingleIteration& /*fact*/) const {
        run_.expected = 1;
    }

    void operator()(const ConfigFile& file) const {
        device_.config_file = printable(file.path);
    }

    void operator()(const UnknownKey& unknown) const {
        if (run_.unknown_keys.size() < most_unknown_keys) {
            run_.unknown_keys.push_back(printable(unknown.key));
        }
    }

    void operator()(const ChipType& chip) const {
        device_.chip_type = chip.type;
    }

    void operator()(const ChipIds& ids) const {
        device_.vendor_id = printable(ids.vendor, longest_id);
        device_.product_id = printable(ids.product, longest_id);
    }

    void operator()(const KernelMac& mac) const {
        device_.mac_kernel = printable(mac.address, longest_mac);
        see_kernel_mac(macs_, mac.address);
    }

    void operator()(const ChipMac& mac) const {
        device_.mac_chip = printable(mac.address, longest_mac);
        see_chip_mac(macs_, mac.address, device_.mac_kernel);
    }

    void operator()(const MacPair& macs) const {
        device_.mac_kernel = printable(macs.kernel, longest_mac);
        device_.mac_chip = printable(macs.chip, longest_mac);
        see_kernel_mac(macs_, macs.kernel);
        see_chip_mac(macs_, macs.chip, macs.kernel);
    }

    void operator()(const OwnAddress& own) const {
        device_.address = printable(own.address, longest_id);
    }

private:
    Run& run_;
    Device& device_;
    SeenMacs& macs_;
};

} // namespace

void take_fact(LogBuilder& builder, const ToolText& text, const Fact& fact) {
    builder.enter(text.phase);
    std::visit(FactTaker(builder), fact);
}

} // namespace wivex::report

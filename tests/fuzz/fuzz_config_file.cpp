// SPDX-License-Identifier: Apache-2.0
// The configuration file: no value reaches further than its line, and those that follow from others
// do follow.

#include "require.hpp"
#include "run/config_file.hpp"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const int file = memfd_create("config", MFD_CLOEXEC);
    if (file < 0 || write(file, data, size) != static_cast<ssize_t>(size)) {
        std::abort();
    }
    wivex::RunConfig config;
    const int result = wivex::read_config_file("/proc/self/fd/" + std::to_string(file), config);
    fuzz::require(result == 1);
    close(file);
    for (const std::string* value : {&config.go_ssid, &config.psk, &config.driver_path}) {
        fuzz::require(value->size() <= 510 &&
                      value->find_first_of(std::string_view("\n\0", 2)) == std::string::npos);
    }
    fuzz::require(config.interface_name == config.interface_name_copy);
    fuzz::require(config.device_type != "USB" || config.usbdevlist == "/proc/bus/usb/devices");
    for (const std::string& product_id : config.product_ids) {
        fuzz::require(product_id.size() == 4 && config.vendor_id.size() == 4);
    }
    return 0;
}

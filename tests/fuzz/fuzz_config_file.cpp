// The configuration file.

#include "driver/config_file.hpp"

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
    wivex::read_config_file("/proc/self/fd/" + std::to_string(file), config);
    close(file);
    return 0;
}

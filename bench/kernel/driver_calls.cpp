// SPDX-License-Identifier: Apache-2.0
// The simulated driver as a library in the tool's process: the calls that it takes over.
//
// Requests to "wlan0" that the scenario speaks of are answered from it, everything else goes to the
// kernel.

#include "kernel/preloaded.hpp"
#include "kernel/simulated_driver.hpp"

#include <dlfcn.h>
#include <errno.h>
#include <linux/if.h>
#include <linux/sockios.h>
#include <linux/wireless.h>
#include <sys/ioctl.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cstdarg>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>

namespace bench {

namespace {

constexpr const char* tool_name = "wivex";

std::string own_path() {
    Dl_info library{};
    return dladdr(reinterpret_cast<void*>(&own_path), &library) != 0 ? library.dli_fname : "";
}

// Programs that the tool starts run without the simulated driver; they may be of another
// architecture.
void leave_environment() {
    const char* const value = std::getenv("LD_PRELOAD");
    std::istringstream libraries(value != nullptr ? value : "");
    std::string kept;
    for (std::string library; libraries >> library;) {
        if (library != own_path()) {
            kept += (kept.empty() ? "" : " ") + library;
        }
    }
    setenv("LD_PRELOAD", kept.c_str(), 1);
}

// Answers in the tool alone; in a shell that starts it, the kernel answers.
SimulatedDriver load() {
    if (std::string_view(program_invocation_short_name) != tool_name) {
        return SimulatedDriver({});
    }
    leave_environment();
    return SimulatedDriver(played_scenario().driver);
}

SimulatedDriver& simulated_driver() {
    static SimulatedDriver driver = load();
    return driver;
}

// Reads the scenario before the tool's main.
[[gnu::constructor]] void begin() {
    simulated_driver();
}

bool is_socket_request(unsigned long request) {
    return request == SIOCDEVPRIVATE || request == SIOCGIFHWADDR || request == SIOCGIWPRIV ||
           request == private_get_request;
}

/// A copy of a request to a socket, for a kernel that may write into it.
class RequestCopy {
public:
    RequestCopy(const void* request, unsigned long number) {
        const bool wireless = number == SIOCGIWPRIV || number == private_get_request;
        std::memcpy(bytes_.data(), request, wireless ? sizeof(iwreq) : sizeof(ifreq));
    }
    void* bytes() {
        return bytes_.data();
    }

private:
    alignas(ifreq) std::array<std::uint8_t, std::max(sizeof(ifreq), sizeof(iwreq))> bytes_{};
};

// The numbers with which an ordinary kernel, or an emulator in front of it, refuses what only the
// driver of the module knows.
bool is_unknown_request(int number) {
    return number == EOPNOTSUPP || number == EINVAL || number == ENOTTY || number == EPERM ||
           number == ENODEV || number == ENOSYS;
}

bool is_for_wlan0(const void* argument) {
    return std::strncmp(static_cast<const char*>(argument), "wlan0", IFNAMSIZ) == 0;
}

} // namespace

} // namespace bench

// On a 32-bit device the header gives this function the name that programs with 64-bit times call.
extern "C" int ioctl(int fd, unsigned long request, ...) noexcept {
    va_list arguments;
    va_start(arguments, request);
    void* const argument = va_arg(arguments, void*);
    va_end(arguments);
    static const auto kernel = bench::next_function<int (*)(int, unsigned long, ...)>("ioctl");
    if (!bench::is_socket_request(request) || !bench::is_for_wlan0(argument)) {
        return kernel(fd, request, argument);
    }
    // The kernel is asked each time: a tracer sees every request, and can let it fail.
    bench::RequestCopy copy(argument, request);
    if (kernel(fd, request, copy.bytes()) != 0 && !bench::is_unknown_request(errno)) {
        return -1;
    }
    if (const std::optional<int> result = bench::simulated_driver().answer(request, argument)) {
        return *result;
    }
    return kernel(fd, request, argument);
}

extern "C" int socket(int domain, int type, int protocol) noexcept {
    constexpr int flags = SOCK_CLOEXEC | SOCK_NONBLOCK;
    if (domain == AF_INET && (type & ~flags) == SOCK_DGRAM) {
        if (const int refusal = bench::simulated_driver().refuse_socket(); refusal != 0) {
            errno = refusal;
            return -1;
        }
    }
    static const auto kernel = bench::next_function<int (*)(int, int, int)>("socket");
    return kernel(domain, type, protocol);
}

// SPDX-License-Identifier: Apache-2.0
// The simulated driver: a preloaded library in front of the requests that no ordinary kernel
// answers.
//
// It stands between the tool and the kernel, in the tool's process only: requests to "wlan0" that
// the scenario speaks of are answered from it, everything else goes to the kernel.

#include "driver/request_log.hpp"
#include "scenario.hpp"
#include "text.hpp"

#include <dlfcn.h>
#include <errno.h>
#include <linux/if.h>
#include <linux/sockios.h>
#include <linux/wireless.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <time.h>

#include <algorithm>
#include <array>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <optional>
#include <sstream>
#include <string_view>
#include <utility>

namespace bench {

namespace {

constexpr const char* scenario_path = "/bench/scenario";
constexpr const char* log_path = "/bench/log/driver.log";
constexpr const char* tool_name = "wivex";

constexpr unsigned long private_get_request = SIOCIWFIRSTPRIV + 5;
constexpr std::size_t variable_buffer_size = 128;
constexpr std::size_t command_buffer_size = 4096;

// The record behind SIOCDEVPRIVATE as a bcmdhd driver reads it.
struct VariableRecord {
    std::uint32_t command;
    std::uint8_t* buffer;
    std::uint32_t length;
    std::uint8_t set;
    std::uint32_t used;
    std::uint32_t needed;
    std::uint32_t magic;
};

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

class SimulatedDriver {
public:
    explicit SimulatedDriver(DriverScript script) : script_(std::move(script)) {}

    const PrivateTable& table() const {
        return script_.table;
    }

    /// The answer to the next request of this kind and name, or null when the kernel is to answer.
    const DriverAnswer* next_answer(const DriverRequest& request) {
        const int count = ++counts_[request];
        const auto fits = [&](const DriverAnswer& answer) {
            return answer.request == request && answer.times.contain(count);
        };
        const auto found = std::find_if(script_.answers.begin(), script_.answers.end(), fits);
        return found == script_.answers.end() ? nullptr : &*found;
    }

private:
    DriverScript script_;
    std::map<DriverRequest, int> counts_;
};

// Answers in the tool alone; in a shell that starts it, the kernel answers.
SimulatedDriver load() {
    if (std::string_view(program_invocation_short_name) != tool_name) {
        return SimulatedDriver({});
    }
    leave_environment();
    std::string problem;
    const auto scenario =
        parse_scenario(read_file(scenario_path).value_or(""), scenario_path, problem);
    if (!scenario) {
        std::fprintf(stderr, "%s\n", problem.c_str());
        std::_Exit(125);
    }
    return SimulatedDriver(scenario->driver);
}

SimulatedDriver& simulated_driver() {
    static SimulatedDriver driver = load();
    return driver;
}

// Reads the scenario before the tool's main.
[[gnu::constructor]] void begin() {
    simulated_driver();
}

using RealIoctl = int (*)(int, unsigned long, ...);
using RealSocket = int (*)(int, int, int);

template <typename Function>
Function real(const char* name) {
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

template <typename Value>
std::span<const std::uint8_t> bytes_of(const Value& value) {
    return {reinterpret_cast<const std::uint8_t*>(&value), sizeof(value)};
}

PointerPlace pointer_at(std::size_t offset) {
    return {offset, sizeof(void*)};
}

void work_for(int milliseconds) {
    timespec left{milliseconds / 1000, milliseconds % 1000 * 1'000'000L};
    while (nanosleep(&left, &left) != 0 && errno == EINTR) {
    }
}

// Writes the request to the log first, so that it shows while the driver works on it.
int conclude(const DriverAnswer& answer, RequestEntry& entry) {
    const int result = answer.error == 0 ? 0 : -1;
    entry.finish(result, answer.error);
    append_to_log(log_path, entry);
    work_for(answer.delay_ms);
    errno = answer.error;
    return result;
}

void copy_answer(const DriverAnswer& answer, std::uint8_t* buffer, std::size_t capacity) {
    if (answer.error != 0 || answer.offset >= capacity) {
        return;
    }
    const std::size_t count = std::min(answer.bytes.size(), capacity - answer.offset);
    std::copy_n(answer.bytes.begin(), count, buffer + answer.offset);
}

std::optional<int> answer_variable(ifreq& request) {
    const auto& record = *reinterpret_cast<VariableRecord*>(request.ifr_data);
    const auto* const name = reinterpret_cast<const char*>(record.buffer);
    const DriverAnswer* const answer = simulated_driver().next_answer(
        {RequestKind::variable, std::string(name, strnlen(name, variable_buffer_size))});
    if (answer == nullptr) {
        return std::nullopt;
    }
    RequestEntry entry(SIOCDEVPRIVATE);
    entry.add_block("ifreq", bytes_of(request), pointer_at(offsetof(ifreq, ifr_data)));
    entry.add_block("record", bytes_of(record), pointer_at(offsetof(VariableRecord, buffer)));
    entry.add_block("buffer", {record.buffer, variable_buffer_size});
    copy_answer(*answer, record.buffer, variable_buffer_size);
    return conclude(*answer, entry);
}

std::optional<int> answer_address(ifreq& request) {
    const DriverAnswer* const answer = simulated_driver().next_answer({RequestKind::address, ""});
    if (answer == nullptr) {
        return std::nullopt;
    }
    RequestEntry entry(SIOCGIFHWADDR);
    entry.add_block("ifreq", bytes_of(request));
    copy_answer(*answer, reinterpret_cast<std::uint8_t*>(request.ifr_hwaddr.sa_data),
                sizeof(request.ifr_hwaddr.sa_data));
    return conclude(*answer, entry);
}

void fill_table(const PrivateTable& table, iw_priv_args* entries, std::size_t count) {
    for (std::size_t index = 0; index < count; ++index) {
        const auto scripted = table.entries.find(index);
        const PrivateRequest request =
            scripted != table.entries.end()
                ? scripted->second
                : PrivateRequest{static_cast<std::uint32_t>(index), "fill" + std::to_string(index)};
        entries[index] = {};
        entries[index].cmd = request.number;
        request.name.copy(entries[index].name, sizeof(entries[index].name));
    }
}

// Fills the caller's table, or says that it is too small. Returns the error number, or 0.
int describe_requests(const PrivateTable& table, iw_point& data) {
    const std::size_t capacity = data.length;
    if (table.size > capacity) {
        if (table.hints) {
            data.length = static_cast<std::uint16_t>(table.size);
        }
        return E2BIG;
    }
    fill_table(table, static_cast<iw_priv_args*>(data.pointer), table.size);
    data.length = static_cast<std::uint16_t>(table.size);
    return 0;
}

std::optional<int> answer_table(iwreq& request) {
    const DriverAnswer* const scripted = simulated_driver().next_answer({RequestKind::table, ""});
    if (scripted == nullptr) {
        return std::nullopt;
    }
    RequestEntry entry(SIOCGIWPRIV);
    entry.add_block("iwreq", bytes_of(request), pointer_at(offsetof(iwreq, u.data.pointer)));
    DriverAnswer answer = *scripted;
    if (answer.error == 0) {
        answer.error = describe_requests(simulated_driver().table(), request.u.data);
    }
    if (answer.claimed) {
        request.u.data.length = static_cast<std::uint16_t>(*answer.claimed);
    }
    return conclude(answer, entry);
}

std::optional<int> answer_command(iwreq& request) {
    const DriverAnswer* const answer = simulated_driver().next_answer(
        {RequestKind::command, std::to_string(request.u.data.flags)});
    if (answer == nullptr) {
        return std::nullopt;
    }
    RequestEntry entry(private_get_request);
    entry.add_block("iwreq", bytes_of(request), pointer_at(offsetof(iwreq, u.data.pointer)));
    copy_answer(*answer, static_cast<std::uint8_t*>(request.u.data.pointer), command_buffer_size);
    const std::size_t length = std::min(answer->bytes.size(), command_buffer_size);
    request.u.data.length = static_cast<std::uint16_t>(answer->claimed.value_or(length));
    return conclude(*answer, entry);
}

// Nothing when the kernel is to answer.
std::optional<int> answer_request(unsigned long request, void* argument) {
    switch (request) {
    case SIOCDEVPRIVATE:
        return answer_variable(*static_cast<ifreq*>(argument));
    case SIOCGIFHWADDR:
        return answer_address(*static_cast<ifreq*>(argument));
    case SIOCGIWPRIV:
        return answer_table(*static_cast<iwreq*>(argument));
    case private_get_request:
        return answer_command(*static_cast<iwreq*>(argument));
    default:
        return std::nullopt;
    }
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
    static const auto kernel = bench::real<bench::RealIoctl>("ioctl");
    if (!bench::is_socket_request(request) || !bench::is_for_wlan0(argument)) {
        return kernel(fd, request, argument);
    }
    // The kernel is asked each time: a tracer sees every request, and can let it fail.
    bench::RequestCopy copy(argument, request);
    if (kernel(fd, request, copy.bytes()) != 0 && !bench::is_unknown_request(errno)) {
        return -1;
    }
    if (const std::optional<int> result = bench::answer_request(request, argument)) {
        return *result;
    }
    return kernel(fd, request, argument);
}

extern "C" int socket(int domain, int type, int protocol) noexcept {
    constexpr int flags = SOCK_CLOEXEC | SOCK_NONBLOCK;
    if (domain == AF_INET && (type & ~flags) == SOCK_DGRAM) {
        const auto* const answer =
            bench::simulated_driver().next_answer({bench::RequestKind::socket, ""});
        if (answer != nullptr && answer->error != 0) {
            errno = answer->error;
            return -1;
        }
    }
    static const auto kernel = bench::real<bench::RealSocket>("socket");
    return kernel(domain, type, protocol);
}

// SPDX-License-Identifier: Apache-2.0
// ask-driver variables | commands | long-command: makes requests to wlan0 as the tool does, and
// some that it never makes, and prints byte by byte what comes back. In front of a driver in a real
// kernel and in front of a simulated one it must print the same.
#include <linux/if.h>
#include <linux/sockios.h>
#include <linux/wireless.h>
#include <sys/ioctl.h>
#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <span>
#include <string_view>
#include <vector>

namespace {

constexpr std::uint32_t get_variable = 262;
constexpr std::uint32_t set_variable = 263;
constexpr std::uint32_t set_driver_variable = 3;
constexpr std::uint32_t driver_magic = 0x00444944;
constexpr unsigned long private_get_request = SIOCIWFIRSTPRIV + 5;
constexpr std::uint16_t loopback_command = 56;

// What a buffer holds where nothing has written.
constexpr std::uint8_t untouched = 0xee;

struct VariableRecord {
    std::uint32_t command;
    void* buffer;
    std::uint32_t length;
    std::uint8_t set;
    std::uint32_t used;
    std::uint32_t needed;
    std::uint32_t magic;
};

using Buffer = std::array<std::uint8_t, 128>;

// What stands between the members is shown too, so it is zero.
VariableRecord record_of(std::uint32_t command, std::uint32_t length, std::uint8_t set,
                         std::uint32_t magic = 0) {
    VariableRecord record{};
    std::memset(&record, 0, sizeof(record));
    record.command = command;
    record.length = length;
    record.set = set;
    record.magic = magic;
    return record;
}

int request_socket() {
    static const int fd = socket(AF_INET, SOCK_DGRAM, 0);
    return fd;
}

// Bytes of a pointer at `pointer`, when there is one, differ from run to run. A run of one byte is
// shown once with its length.
void print_bytes(const char* name, std::span<const std::uint8_t> bytes, std::size_t pointer = 0,
                 std::size_t pointer_size = 0) {
    std::printf("  %s", name);
    for (std::size_t at = 0; at < bytes.size();) {
        if (pointer_size > 0 && at == pointer) {
            std::printf(" **");
            at += pointer_size;
            continue;
        }
        std::size_t end = at + 1;
        while (end < bytes.size() && bytes[end] == bytes[at] && end != pointer) {
            ++end;
        }
        std::printf(end - at > 1 ? " %02x*%zu" : " %02x", bytes[at], end - at);
        at = end;
    }
    std::printf("\n");
}

template <typename Value>
std::span<const std::uint8_t> bytes_of(const Value& value) {
    return {reinterpret_cast<const std::uint8_t*>(&value), sizeof(value)};
}

template <typename Request>
void ask(const char* title, unsigned long number, Request& request) {
    errno = 0;
    const int result = ioctl(request_socket(), number, &request);
    std::printf("%s\n  result %d %s\n", title, result, result < 0 ? strerrorname_np(errno) : "");
}

template <typename Request>
Request request_to(std::string_view interface) {
    Request request{};
    interface.copy(request.ifr_name, IFNAMSIZ);
    return request;
}

Buffer variable_buffer(std::string_view text) {
    Buffer buffer;
    buffer.fill(untouched);
    text.copy(reinterpret_cast<char*>(buffer.data()), buffer.size());
    return buffer;
}

void ask_variable(const char* title, VariableRecord record, std::string_view text,
                  std::string_view interface = "wlan0") {
    Buffer buffer = variable_buffer(text);
    record.buffer = buffer.data();
    auto request = request_to<ifreq>(interface);
    request.ifr_data = reinterpret_cast<char*>(&record);
    ask(title, SIOCDEVPRIVATE, request);
    print_bytes("request", bytes_of(request), offsetof(ifreq, ifr_data), sizeof(void*));
    print_bytes("record", bytes_of(record), offsetof(VariableRecord, buffer), sizeof(void*));
    print_bytes("buffer", buffer);
}

void ask_without_record() {
    auto request = request_to<ifreq>("wlan0");
    ask("no record", SIOCDEVPRIVATE, request);
    VariableRecord record = record_of(get_variable, 14, 0);
    request.ifr_data = reinterpret_cast<char*>(&record);
    ask("no buffer", SIOCDEVPRIVATE, request);
}

void ask_address(std::string_view interface) {
    auto request = request_to<ifreq>(interface);
    std::memset(&request.ifr_ifru, untouched, sizeof(request.ifr_ifru));
    ask("hardware address", SIOCGIFHWADDR, request);
    print_bytes("request", bytes_of(request));
}

void ask_variables() {
    using namespace std::string_view_literals;
    const VariableRecord address = record_of(get_variable, 14, 0);
    const VariableRecord mode = record_of(set_variable, 17, 1);
    const VariableRecord transfer = record_of(set_driver_variable, 25, 1, driver_magic);
    constexpr auto address_text = "cur_etheraddr\0"sv;
    constexpr auto mode_text = "bus:loopback\0\1\0\0\0"sv;
    constexpr auto transfer_text = "usb_lb_txfer\0\0\2\0\0\12\0\0\0\377\377\377\377"sv;
    ask_address("wlan0");
    ask_address("wlan9");
    ask_variable("address", address, address_text);
    VariableRecord cut = address;
    cut.length = 5;
    ask_variable("name without its end", cut, address_text);
    ask_variable("another interface", address, address_text, "wlan9");
    ask_variable("interface name without its end", address, address_text, "wlan0wlan0wlan0wlan0");
    ask_variable("unknown variable", address, "cur_etheraddx\0"sv);
    ask_variable("mode", mode, mode_text);
    ask_variable("transfer", transfer, transfer_text);
    ask_variable("refused transfer", transfer, transfer_text);
    ask_without_record();
}

void ask_table(std::size_t capacity) {
    std::vector<iw_priv_args> table(capacity);
    std::memset(table.data(), untouched, capacity * sizeof(iw_priv_args));
    auto request = request_to<iwreq>("wlan0");
    request.u.data.pointer = table.data();
    request.u.data.length = static_cast<std::uint16_t>(capacity);
    std::printf("%zu ", capacity);
    ask("entries of the table", SIOCGIWPRIV, request);
    print_bytes("request", bytes_of(request), offsetof(iwreq, u.data.pointer), sizeof(void*));
    for (const std::size_t index :
         {std::size_t{0}, std::size_t{1}, std::size_t{20}, capacity - 1}) {
        if (index < capacity) {
            print_bytes("entry", bytes_of(table[index]));
        }
    }
}

void ask_command(const char* title, std::uint16_t command, std::uint16_t length) {
    std::array<std::uint8_t, 4096> answer{};
    answer.fill(untouched);
    auto request = request_to<iwreq>("wlan0");
    request.u.data.pointer = answer.data();
    request.u.data.length = length;
    request.u.data.flags = command;
    ask(title, private_get_request, request);
    print_bytes("request", bytes_of(request), offsetof(iwreq, u.data.pointer), sizeof(void*));
    print_bytes("answer", answer);
}

void ask_long_command() {
    ask_command("answer that claims to be longer than it can be", loopback_command, 0);
}

void ask_without_answer() {
    auto request = request_to<iwreq>("wlan0");
    request.u.data.flags = loopback_command;
    ask("no answer buffer", private_get_request, request);
    request.u.data.length = 16;
    ask("no table buffer", SIOCGIWPRIV, request);
}

void ask_commands() {
    for (const std::size_t capacity : {1, 16, 39, 40, 41, 512}) {
        ask_table(capacity);
    }
    ask_command("loopback", loopback_command, 0);
    ask_command("loopback with a length", loopback_command, 4096);
    ask_command("refused loopback", loopback_command, 7);
    ask_without_answer();
}

} // namespace

int main(int count, char** arguments) {
    const std::string_view what = count == 2 ? arguments[1] : "";
    if (what == "variables") {
        ask_variables();
    } else if (what == "commands") {
        ask_commands();
    } else if (what == "long-command") {
        ask_long_command();
    } else {
        std::fprintf(stderr, "usage: ask-driver variables | commands | long-command\n");
        return 2;
    }
    return 0;
}

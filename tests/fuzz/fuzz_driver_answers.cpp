// Answers of a hostile driver: the input is what the driver writes into the caller's buffers and
// what it claims about them.

#include "common/process_state.hpp"
#include "diag/loopback_broadcom.hpp"
#include "diag/loopback_qca_combo.hpp"
#include "diag/register_files.hpp"

#include <linux/if.h>
#include <linux/sockios.h>
#include <linux/wireless.h>

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace {

std::string_view answers;

std::uint8_t take_byte() {
    if (answers.empty()) {
        return 0;
    }
    const auto byte = static_cast<std::uint8_t>(answers.front());
    answers.remove_prefix(1);
    return byte;
}

std::uint16_t take_word() {
    const unsigned low = take_byte();
    return static_cast<std::uint16_t>(low | static_cast<unsigned>(take_byte()) << 8);
}

void fill(void* buffer, std::size_t capacity) {
    const std::size_t count = std::min(capacity, answers.size());
    std::memcpy(buffer, answers.data(), count);
    answers.remove_prefix(count);
}

int result() {
    constexpr int errors[] = {0, 0, 0, E2BIG, E2BIG, EIO, EINVAL, ENODEV};
    errno = errors[take_byte() % std::size(errors)];
    return errno == 0 ? 0 : -1;
}

// The buffer's capacity is known from the caller: 128 bytes, or entries, or 4096 bytes.
int answer(unsigned long request, void* argument) {
    const int status = result();
    if (request == SIOCDEVPRIVATE) {
        // The second field of the record is its buffer.
        void* buffer = nullptr;
        const auto* const record =
            static_cast<const char*>(static_cast<ifreq*>(argument)->ifr_data);
        std::memcpy(&buffer, record + sizeof(void*), sizeof(buffer));
        fill(buffer, 128);
        return status;
    }
    iw_point& data = static_cast<iwreq*>(argument)->u.data;
    const std::size_t capacity =
        request == SIOCGIWPRIV ? data.length * sizeof(iw_priv_args) : std::size_t{4096};
    data.length = take_word();
    fill(data.pointer, capacity);
    return status;
}

} // namespace

// Stands in front of the kernel's for the whole program.
extern "C" int ioctl(int, unsigned long request, ...) noexcept {
    va_list arguments;
    va_start(arguments, request);
    void* const argument = va_arg(arguments, void*);
    va_end(arguments);
    return answer(request, argument);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    answers = {reinterpret_cast<const char*>(data), size};
    const wivex::RunConfig config;
    const unsigned choice = take_byte();
    wivex::run_options.debug = choice >= 128 ? 1 : 0;
    switch (choice % 3) {
    case 0:
        wivex::loopback_qca_combo(config);
        break;
    case 1:
        wivex::loopback_broadcom(config);
        break;
    default:
        const wivex::RegisterDump dump = wivex::parse_register_dump(answers);
        if (dump.complete() && dump.word().size() != 8) {
            __builtin_trap();
        }
    }
    return 0;
}

// SPDX-License-Identifier: Apache-2.0
// Answers of a hostile driver to private requests: the input is what the driver writes into the
// caller's buffers and what it claims about them. No table of its requests is longer than what the
// driver was given to fill, and its counts decide the verdict.

#include "common/process_state.hpp"
#include "diag/loopback_broadcom.hpp"
#include "diag/loopback_qca_combo.hpp"
#include "diag/private_ioctls.hpp"
#include "require.hpp"

#include <linux/if.h>
#include <linux/sockios.h>
#include <linux/wireless.h>

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace {

using fuzz::require;

std::string_view answers;

// How many entries the caller of the last request for the table offered.
std::size_t offered_entries = 0;

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
    offered_entries = request == SIOCGIWPRIV ? data.length : 0;
    const std::size_t capacity =
        request == SIOCGIWPRIV ? data.length * sizeof(iw_priv_args) : std::size_t{4096};
    data.length = take_word();
    fill(data.pointer, capacity);
    return status;
}

void check_table() {
    std::vector<iw_priv_args> table;
    const int count = wivex::get_priv_ioctls(0, "wlan0", table);
    require(count >= 0 ? table.size() == static_cast<std::size_t>(count) : table.empty());
    require(table.size() <= offered_entries && table.size() < 1000);
    const std::size_t found = wivex::find_private_ioctl(table, "get");
    require(found <= table.size());
    require(found == table.size() || std::string_view(table[found].name, 3) == "get");
}

// A driver that answers with the counts of a text.
void check_counts() {
    const std::string answer(answers.substr(0, 200));
    const wivex::LoopbackCounts counts = wivex::parse_loopback_answer(answer.c_str());
    iw_priv_args entry{};
    entry.cmd = 56;
    std::memcpy(entry.name, "getusbcontx", 11);
    const std::string reply = std::string(1, '\0') + std::string("\xff\xff") + answer;
    answers = reply;
    const int result = wivex::qca_combo_loopback(0, "getusbcontx", "wlan0", std::span(&entry, 1));
    answers = {};
    const bool good =
        counts.total != 0 && counts.sequence_errors == 0 && counts.content_errors == 0;
    require(result == (good ? 0 : 2));
}

} // namespace

// Stands in front of the kernel's for the whole program.
extern "C" int ioctl(int /*fd*/, unsigned long request, ...) noexcept {
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
    switch (choice % 4) {
    case 0:
        wivex::loopback_qca_combo(config);
        break;
    case 1:
        wivex::loopback_broadcom(config);
        break;
    case 2:
        check_table();
        break;
    default:
        check_counts();
    }
    return 0;
}
